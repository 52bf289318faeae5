#include "devices/device.h"

#include <type_traits>

#include "devices/number_entry.h"
#include "devices/shared_state.h"
#include "mixer/mixer.h"
#include "panel/control_panel.h"
#include "panel/main_window.h"
#include "panel/status_display.h"
#include "video/video_window.h"

namespace quorvex {
namespace {

struct StateButton {
  int command;
  bool lit;
};

bool PlaysInOrder() { return currentDeviceType == DeviceType::kCd || currentDeviceType == DeviceType::kFile; }

}  // namespace

CDevice::CDevice(DeviceType deviceType) : kind(deviceType) {
  currentDeviceType = DeviceType::kNone;
  ClearDisplayTime();
  ClearDisplayNumbers();
  ClearDisplayText();
  UpdateStateLamps();
  UpdateButtonStates();
}

bool CDevice::PauseGraph() {
  if (mediaControl) mediaControl->Pause();
  return true;
}

bool CDevice::Pause() {
  if (!mediaControl) return false;
  if (playState == PlayState::kPaused) {
    Play(0, 0);
    return true;
  }
  mediaControl->Pause();
  SetPlayState(PlayState::kPaused);
  RefreshStillPicture();  // a renderer that is paused may have gone on to the next picture
  return true;
}

// A stopped graph rests at the beginning of its medium.
bool CDevice::Stop() {
  if (!mediaControl || !mediaSeeking) return false;
  mediaControl->Pause();
  LONGLONG start = 0;
  mediaSeeking->SetPositions(&start, AM_SEEKING_AbsolutePositioning, nullptr, AM_SEEKING_NoPositioning);
  OAFilterState state = 0;
  mediaControl->GetState(static_cast<LONG>(INFINITE), &state);
  const HRESULT result = mediaControl->Stop();
  SetPlayState(PlayState::kStopped);
  return SUCCEEDED(result);
}

void CDevice::EnterDigit(int digit) {
  if (currentDeviceType != DeviceType::kTv) return;
  if (!entryActive) {
    entryActive = true;
    enteredNumber = digit;
  } else {
    enteredNumber = WithDigit(enteredNumber, digit);
    if (EntryIsComplete(enteredNumber, highestNumber)) {
      ConfirmEntry();
      return;
    }
  }
  ShowDisplayNumber(enteredNumber, true, false);
  if (entryTimer != 0) ::KillTimer(mainWindow, kEntryTimer);
  entryTimer = ::SetTimer(mainWindow, kEntryTimer, kEntryTimeoutMs, nullptr);
}

void CDevice::EndNumberEntry() {
  ShowDisplayNumber(currentNumber, true, false);
  entryActive = false;
}

void CDevice::SetPlayState(PlayState state) {
  playState = state;
  UpdateStateLamps();
  UpdateButtonStates();
}

void CDevice::RefreshStillPicture() {
  if (playState != PlayState::kPaused || !mediaSeeking || !theVideoWindow) return;
  LONGLONG position = 0;
  if (FAILED(mediaSeeking->GetCurrentPosition(&position))) return;
  mediaSeeking->SetPositions(&position, AM_SEEKING_AbsolutePositioning, nullptr, AM_SEEKING_NoPositioning);
}

void CDevice::UpdateStateLamps() const {
  SetDisplayElement(kPauseLamp, playState == PlayState::kPaused ? 1 : 0);
  SetDisplayElement(kMuteLamp, muted ? 1 : 0);
  SetDisplayElement(kRecordLamp, recording ? 1 : 0);
  SetDisplayElement(kRandomLamp, randomOn ? 1 : 0);
  SetDisplayElement(kRepeatLamp, repeatMode != RepeatMode::kOff ? 1 : 0);
  SetDisplayElement(kRepeatOneLamp, repeatMode == RepeatMode::kOne ? 1 : 0);
  SetDisplayElement(kRepeatAllLamp, repeatMode == RepeatMode::kAll ? 1 : 0);
  SetDisplayElement(kMenuLamp, menuShown ? 1 : 0);
  SetDisplayElement(kCaptionLamp, captionsOn ? 1 : 0);
  SetDisplayElement(kTimerLamp, timerOn ? 1 : 0);
  for (int type = 0; type <= kFileLamp - kIdleLamp; ++type) {
    SetDisplayElement(kIdleLamp + type, type == static_cast<int>(currentDeviceType) ? 1 : 0);
  }
}

void CDevice::UpdateButtonStates() const {
  const StateButton states[] = {
      {kCommandTimer, timerOn},
      {kCommandRepeat, repeatMode != RepeatMode::kOff},
      {kCommandRandom, randomOn},
      {kCommandPause, playState == PlayState::kPaused},
      {kCommandPlay, playState == PlayState::kPlaying},
      {kCommandRecord, recording},
      {kCommandClosedCaption, captionsOn},
      {kCommandMenu, menuShown},
      {kCommandMute, muted},
  };
  for (const StateButton& state : states)
    SetButtonState(state.command, state.lit ? ButtonLook::kLit : ButtonLook::kNormal);
}

void CDevice::ToggleRepeat() {
  if (!PlaysInOrder()) return;
  repeatMode = NextRepeatMode(repeatMode);
  UpdateStateLamps();
  UpdateButtonStates();
}

void CDevice::ToggleRandom() {
  if (!PlaysInOrder()) return;
  randomOn = !randomOn;
  UpdateStateLamps();
  UpdateButtonStates();
  OnRandomChanged();
}

}  // namespace quorvex
