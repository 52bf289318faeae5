// What the card shows: its tuner or one of its other inputs.
#include <windows.h>

#include <array>

#include "devices/tv/tv_device.h"
#include "panel/status_display.h"

namespace quorvex {
namespace {

struct InputFacts {
  const char* name;
  LONG crossbarPin;  // the crossbar's input
};

// By VideoInput.
constexpr std::array<InputFacts, kVideoInputCount> kInputs{{{"Tuner", 1}, {"VIDEO 1", 0}, {"VIDEO 2", 2}}};

const InputFacts& FactsOf(VideoInput input) { return kInputs[static_cast<std::size_t>(input)]; }

}  // namespace

const char* CTVDevice::InputName() const { return FactsOf(videoInput).name; }

bool CTVDevice::SelectVideoInput() {
  if (!tuner) return false;
  EndEntry();
  videoInput = static_cast<VideoInput>((static_cast<int>(videoInput) + 1) % kVideoInputCount);
  ApplyVideoInput();
  return true;
}

void CTVDevice::ApplyVideoInput() {
  SaveSettings();
  ClearDisplayNumbers();
  if (!tuner) return;
  RouteTo(videoInput);
  if (videoInput == VideoInput::kTuner) {
    ShowTunerInput();
  } else {
    ShowOsdText(InputName());
    SetDisplayElement(kChannelLabel, 0);
  }
}

void CTVDevice::RouteTo(VideoInput input) {
  if (!crossbar) return;
  const HRESULT result = crossbar->Route(0, FactsOf(input).crossbarPin);
  TellRefusal(result, std::string("Cannot switch to ") + FactsOf(input).name, refusedInput);
}

void CTVDevice::ShowTunerInput() {
  const std::string input = tunerInput == TunerFeed::kAntenna ? "ANTENNA" : "CABLE";
  ShowOsdText(orderLength > 0 ? input + ' ' + std::to_string(CurrentEntry()) : input);
  ShowDisplayNumber(CurrentEntry(), false, false);
  SetDisplayElement(kChannelLabel, 1);
  SetDisplayElement(kOfLabel, 1);
  ShowDisplayNumber(highestNumber, false, true);
}

}  // namespace quorvex
