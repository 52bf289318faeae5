#include "shell/actions.h"

#include <windows.h>

#include <utility>

#include "devices/audio_adjustment.h"
#include "devices/current_device.h"
#include "devices/shared_state.h"
#include "mixer/mixer.h"
#include "panel/main_window.h"
#include "panel/status_display.h"
#include "setup/setup_sheet.h"
#include "shell/settings.h"
#include "video/video_window.h"

namespace quorvex {
namespace {

bool closeAwaited = false;  // the panel is to close after a dialog

using DeviceOperation = bool (CDevice::*)();

// An arrow key works on the level bar that is shown, of the sound or of the picture; else it may have another
// use for the device (or null).
void Arrow(void (*onSound)(), DeviceOperation onPicture, DeviceOperation otherwise) {
  if (!currentDevice) return;
  if (!IsOsdLevelShown()) {
    if (otherwise != nullptr) (currentDevice.get()->*otherwise)();
  } else if (IsAudioAdjustment()) {
    onSound();
  } else {
    (currentDevice.get()->*onPicture)();
  }
}

}  // namespace

void PlayAtRate(double rate) {
  if (!currentDevice) return;
  currentDevice->playRate = rate;
  currentDevice->Play(0, 0);
}

void PressUp() { Arrow(NextAudioAdjustment, &CDevice::AdjustUp, &CDevice::Up); }

void PressDown() { Arrow(PreviousAudioAdjustment, &CDevice::AdjustDown, &CDevice::Down); }

void PressRight() { Arrow(IncreaseAudio, &CDevice::Increase, nullptr); }

void PressLeft() { Arrow(DecreaseAudio, &CDevice::Decrease, nullptr); }

void PressMute() {
  if (mixerAvailable && !ToggleMute()) SetDisplayText("No mute control");
}

void Setup() {
  ShowSetupSheet({.autoStartDevice = settings.autoStartDevice,
                  .disableApm = settings.disableApm,
                  .disableScreenSaver = settings.disableScreenSaver,
                  .apply = ApplyScreenSaverSetting});
}

void ToggleFullScreen() {
  if (theVideoWindow) theVideoWindow->ToggleFullScreen();
}

void HidePlayer() {
  if (fullScreen && theVideoWindow) {
    theVideoWindow->CoverPanel();
    return;
  }
  LowerControlPanel();
  // The system menu no longer lists the command, but the default procedure still knows it.
  ::DefDlgProcA(mainWindow, WM_SYSCOMMAND, SC_MINIMIZE, 0);
}

void Power() {
  closeAwaited = ::IsWindowEnabled(mainWindow) == FALSE;
  if (!closeAwaited) ::DestroyWindow(mainWindow);
}

void OnPanelEnabled() {
  if (std::exchange(closeAwaited, false)) ::PostMessageA(mainWindow, WM_CLOSE, 0, 0);
}

void OnSessionEnd() {
  sessionEnds = true;
  SaveSettings();
  if (!currentDevice) return;
  currentDevice->SaveSettings();
  if (currentDevice->recording) currentDevice->Stop();
}

}  // namespace quorvex
