// Brightness, contrast, hue and colour of the card's picture, changed with the arrow keys while their level
// bar is shown.
#include <windows.h>

#include <array>

#include "devices/audio_adjustment.h"
#include "devices/tv/adjustment_step.h"
#include "devices/tv/tv_device.h"
#include "panel/main_window.h"

namespace quorvex {
namespace {

// By the platform's numbers of them.
constexpr std::array kTitles{"BRIGHTNESS", "CONTRAST", "HUE", "COLOR"};

}  // namespace

bool CTVDevice::ShowVideoAdjustment() {
  if (IsOsdLevelShown() && !IsAudioAdjustment()) {
    HideOsd();
    return true;
  }
  if (!pictureControls) {
    const HRESULT result =
        FindInterface(nullptr, videoFilter, IID_IAMVideoProcAmp, pictureControls.ReceiveVoid());
    if (FAILED(result)) {
      ReportError("Video Adjustment not available");
      return false;
    }
  }
  adjustmentInfo.property = VideoProcAmp_Brightness;
  ShowAdjustment();
  return true;
}

void CTVDevice::ShowAdjustment() {
  ReadAdjustment();
  ShowOsdLevel(kAdjustmentSegments, adjustmentInfo);
}

void CTVDevice::ReadAdjustment() {
  LONG minimum = 0;
  LONG maximum = 0;
  LONG delta = 0;
  LONG usual = 0;
  LONG flags = 0;
  LONG value = 0;
  pictureControls->GetRange(adjustmentInfo.property, &minimum, &maximum, &delta, &usual, &flags);
  pictureControls->Get(adjustmentInfo.property, &value, &flags);
  adjustmentInfo.adjustId = adjustmentInfo.property;
  adjustmentInfo.title = kTitles[static_cast<std::size_t>(adjustmentInfo.property)];
  adjustmentInfo.barMode = 1;
  adjustmentInfo.minimum = minimum;
  adjustmentInfo.maximum = maximum;
  adjustmentInfo.steppingDelta = delta;
  adjustmentInfo.defaultValue = usual;
  adjustmentInfo.capsFlags = flags;
  adjustmentInfo.value = value;
  adjustmentInfo.step = AdjustmentStep(minimum, maximum);
}

bool CTVDevice::MoveAdjustment(int steps) {
  if (!pictureControls) return false;
  constexpr int kCount = static_cast<int>(kTitles.size());
  adjustmentInfo.property = (adjustmentInfo.property + steps + kCount) % kCount;
  ShowAdjustment();
  return true;
}

bool CTVDevice::AdjustUp() { return MoveAdjustment(1); }

bool CTVDevice::AdjustDown() { return MoveAdjustment(-1); }

// After the sound was adjusted, the record of the adjustment is not the picture's any more.
bool CTVDevice::ChangeValue(int steps) {
  if (!pictureControls) return false;
  if (IsAudioAdjustment()) ReadAdjustment();
  LONG value = 0;
  LONG flags = 0;
  pictureControls->Get(adjustmentInfo.property, &value, &flags);
  adjustmentInfo.value = AdjustedValue(value, adjustmentInfo.step, steps);
  pictureControls->Set(adjustmentInfo.property, adjustmentInfo.value, VideoProcAmp_Flags_Manual);
  if (IsOsdLevelShown()) {
    ShowOsdLevel(kAdjustmentSegments, adjustmentInfo);
  } else {
    RefreshOsdLevel();
  }
  return true;
}

bool CTVDevice::Increase() { return ChangeValue(1); }

bool CTVDevice::Decrease() { return ChangeValue(-1); }

}  // namespace quorvex
