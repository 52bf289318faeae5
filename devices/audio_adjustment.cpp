#include "devices/audio_adjustment.h"

#include <array>

#include "devices/current_device.h"
#include "devices/shared_state.h"
#include "mixer/mixer.h"
#include "panel/status_display.h"

namespace quorvex {
namespace {

constexpr int kFirstAudioAdjustment = 4;
constexpr int kSegments = 31;

struct AudioBar {
  AudioOperation read;
  AudioOperation up;  // the Right key's
  AudioOperation down;
  std::uint32_t (*operate)(AudioOperation);
  int barMode;
  const char* title;
  const char* missing;
};

// By adjustId, from kFirstAudioAdjustment on.
constexpr auto kBars = std::to_array<AudioBar>({
    {AudioOperation::kReadVolume, AudioOperation::kVolumeUp, AudioOperation::kVolumeDown, VolumeBalance, 1,
     "VOLUME", "No volume control"},
    {AudioOperation::kReadBalance, AudioOperation::kBalanceRight, AudioOperation::kBalanceLeft, VolumeBalance,
     0, "BALANCE", "No balance control"},
    {AudioOperation::kReadBass, AudioOperation::kBassUp, AudioOperation::kBassDown, ToneControl, 1, "BASS",
     "No bass control"},
    {AudioOperation::kReadTreble, AudioOperation::kTrebleUp, AudioOperation::kTrebleDown, ToneControl, 1,
     "TREBLE", "No treble control"},
});

// The bar of the current adjustment, which must be one of the sound.
const AudioBar& CurrentBar() {
  return kBars[static_cast<std::size_t>(adjustmentInfo.adjustId - kFirstAudioAdjustment)];
}

void SayMissing(const AudioBar& bar) {
  if (currentDevice && IsOsdLevelShown()) currentDevice->HideOsd();
  SetDisplayText(bar.missing);
}

// Goes on by `steps` of the bars, which are a ring.
void MoveOn(int steps) {
  constexpr int kCount = static_cast<int>(kBars.size());
  const int index = (adjustmentInfo.adjustId - kFirstAudioAdjustment + steps + kCount) % kCount;
  adjustmentInfo.adjustId = kFirstAudioAdjustment + index;
  ShowAudioLevel();
}

void Change(AudioOperation AudioBar::*operation) {
  if (!mixerAvailable) return;
  if (IsAudioAdjustment()) {
    const AudioBar& bar = CurrentBar();
    adjustmentInfo.value = static_cast<std::int32_t>(bar.operate(bar.*operation));
    if (bar.read == AudioOperation::kReadBalance && !HasBalance()) SetDisplayText(bar.missing);
  }
  if (currentDevice) currentDevice->RefreshOsdLevel();
}

}  // namespace

bool IsAudioAdjustment() {
  const int index = adjustmentInfo.adjustId - kFirstAudioAdjustment;
  return index >= 0 && index < static_cast<int>(kBars.size());
}

void ShowAudioAdjustment() {
  if (!mixerAvailable) return;
  if (currentDevice && IsOsdLevelShown() && IsAudioAdjustment()) {
    currentDevice->HideOsd();
    return;
  }
  adjustmentInfo.adjustId = kFirstAudioAdjustment;
  ShowAudioLevel();
}

void ShowAudioLevel() {
  if (IsAudioAdjustment()) {
    const AudioBar& bar = CurrentBar();
    if (!HasAudioControl(bar.read)) {
      SayMissing(bar);
      return;
    }
    adjustmentInfo.barMode = bar.barMode;
    adjustmentInfo.value = static_cast<std::int32_t>(bar.operate(bar.read));
    adjustmentInfo.title = bar.title;
  }
  adjustmentInfo.minimum = 0;
  adjustmentInfo.maximum = static_cast<std::int32_t>(kFullLevel);
  adjustmentInfo.step = static_cast<std::int32_t>(kLevelStep);
  if (currentDevice) currentDevice->ShowOsdLevel(kSegments, adjustmentInfo);
}

void NextAudioAdjustment() { MoveOn(1); }

void PreviousAudioAdjustment() { MoveOn(-1); }

void IncreaseAudio() { Change(&AudioBar::up); }

void DecreaseAudio() { Change(&AudioBar::down); }

}  // namespace quorvex
