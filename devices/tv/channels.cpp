// The tuner's channels: the list of an input, and the keys that go through it and change it.
#include <windows.h>

#include <utility>

#include "devices/config_store.h"
#include "devices/tv/channel_list.h"
#include "devices/tv/tv_device.h"
#include "mixer/mixer.h"
#include "panel/main_window.h"
#include "panel/status_display.h"

namespace quorvex {

bool CTVDevice::ApplyTunerInput() {
  if (!tuner) return true;
  listStands = false;
  const HRESULT result = tuner->put_InputType(0, static_cast<TunerInputType>(tunerInput));
  if (ReportErrorIf(result, "put_InputType")) return SUCCEEDED(result);
  ReadTunerRange();
  SetChannelRange(*this, lowestNumber, highestNumber);
  LoadChannelList();
  MoveTo(ReadLastChannel(ReadConfig().document));
  previousIndex = orderIndex;
  listStands = true;
  return TuneCurrentEntry();
}

void CTVDevice::ReadTunerRange() {
  LONG lowest = 0;
  LONG highest = -1;  // no channel, if the tuner does not say
  tuner->ChannelMinMax(&lowest, &highest);
  lowestNumber = lowest;
  highestNumber = highest;
  SetDisplayElement(kOfLabel, 1);
  ShowDisplayNumber(highestNumber, false, true);
}

bool CTVDevice::LoadChannelList() {
  const IniSnapshot store = ReadConfig();
  if (!ReadChannels(*this, ReadChannelText(store.document, tunerInput))) return false;
  previousIndex = 0;
  return true;
}

// The sound is off while the tuner moves.
bool CTVDevice::TuneChannel(int channel) {
  currentNumber = channel;
  ShowOsdText(std::to_string(channel));
  ShowDisplayNumber(channel, false, false);
  const bool silenced = !muted && ToggleMute();
  const HRESULT result = tuner->put_Channel(channel, AMTUNER_SUBCHAN_DEFAULT, AMTUNER_SUBCHAN_DEFAULT);
  if (silenced) ToggleMute();
  TellRefusal(result, "Cannot tune to channel " + std::to_string(channel), refusedChannel);
  return true;
}

bool CTVDevice::TuneCurrentEntry() { return orderLength == 0 || TuneChannel(CurrentEntry()); }

bool CTVDevice::StepChannel(void (PlayOrder::*step)()) {
  if (!IsTunerShown()) return false;
  previousIndex = orderIndex;
  (this->*step)();
  return TuneCurrentEntry();
}

bool CTVDevice::Up() { return StepChannel(&PlayOrder::StepForward); }

bool CTVDevice::Down() { return StepChannel(&PlayOrder::StepBack); }

void CTVDevice::EnterDigit(int digit) {
  if (IsTunerShown()) CGraphDevice::EnterDigit(digit);
}

void CTVDevice::EndEntry() {
  if (entryTimer != 0) ::KillTimer(mainWindow, kEntryTimer);
  entryTimer = 0;
  entryActive = false;
}

bool CTVDevice::ConfirmEntry() {
  if (!IsTunerShown() || !entryActive) return false;
  EndEntry();
  if (enteredNumber < lowestNumber || enteredNumber > highestNumber) {
    ShowDisplayNumber(CurrentEntry(), true, false);
    return true;
  }
  previousIndex = orderIndex;
  MoveTo(enteredNumber);
  return TuneChannel(enteredNumber);
}

bool CTVDevice::AddChannel() {
  if (!IsTunerShown() || entryActive || Contains(currentNumber)) return false;
  if (!InsertChannel(*this, currentNumber)) SetDisplayText("Channel list full");
  return true;
}

bool CTVDevice::DeleteChannel() {
  if (!IsTunerShown() || entryActive || orderLength == 1 || !Contains(currentNumber)) return false;
  const int position = IndexOf(currentNumber);
  Up();
  previousIndex = 0;
  RemoveChannel(*this, position);
  MoveTo(currentNumber);
  return true;
}

bool CTVDevice::RecallLastChannel() {
  if (!IsTunerShown()) return false;
  std::swap(orderIndex, previousIndex);
  return TuneCurrentEntry();
}

}  // namespace quorvex
