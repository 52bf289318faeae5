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
};

// By adjustId, from kFirstAudioAdjustment on.
constexpr auto kBars = std::to_array<AudioBar>({
    {AudioOperation::kReadVolume, AudioOperation::kVolumeUp, AudioOperation::kVolumeDown, VolumeBalance, 1,
     "VOLUME"},
    {AudioOperation::kReadBalance, AudioOperation::kBalanceRight, AudioOperation::kBalanceLeft, VolumeBalance,
     0, "BALANCE"},
    {AudioOperation::kReadBass, AudioOperation::kBassUp, AudioOperation::kBassDown, ToneControl, 1, "BASS"},
    {AudioOperation::kReadTreble, AudioOperation::kTrebleUp, AudioOperation::kTrebleDown, ToneControl, 1,
     "TREBLE"},
});

// The bar of the current adjustment, which must be one of the sound.
const AudioBar& CurrentBar() {
  return kBars[static_cast<std::size_t>(adjustmentInfo.adjustId - kFirstAudioAdjustment)];
}

// Shows the level of the adjustment that adjustmentInfo names, which must be one of the sound.
void ShowAudioLevel() {
  const AudioBar& bar = CurrentBar();
  adjustmentInfo.barMode = bar.barMode;
  adjustmentInfo.value = static_cast<std::int32_t>(bar.operate(bar.read));
  adjustmentInfo.title = bar.title;
  adjustmentInfo.minimum = 0;
  adjustmentInfo.maximum = static_cast<std::int32_t>(kFullLevel);
  adjustmentInfo.step = static_cast<std::int32_t>(kLevelStep);
  if (currentDevice) currentDevice->ShowOsdLevel(kSegments, adjustmentInfo);
}

// Goes on in one direction of the bars, which are a ring, to the next that the speaker line has a control
// for.
void MoveOn(int step) {
  constexpr int kCount = static_cast<int>(kBars.size());
  int index = adjustmentInfo.adjustId - kFirstAudioAdjustment;
  for (int i = 0; i < kCount; ++i) {
    index = (index + step + kCount) % kCount;
    if (HasAudioControl(kBars[static_cast<std::size_t>(index)].read)) break;
  }
  adjustmentInfo.adjustId = kFirstAudioAdjustment + index;
  ShowAudioLevel();
}

void Change(AudioOperation AudioBar::*operation) {
  if (!mixerAvailable) return;
  if (IsAudioAdjustment()) {
    const AudioBar& bar = CurrentBar();
    adjustmentInfo.value = static_cast<std::int32_t>(bar.operate(bar.*operation));
    if (bar.read == AudioOperation::kReadBalance && !HasBalance()) SetDisplayText("No balance control");
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
  if (!HasAudioControl(AudioOperation::kReadVolume)) {
    SetDisplayText("No volume control");
    return;
  }
  adjustmentInfo.adjustId = kFirstAudioAdjustment;
  ShowAudioLevel();
}

void NextAudioAdjustment() { MoveOn(1); }

void PreviousAudioAdjustment() { MoveOn(-1); }

void IncreaseAudio() { Change(&AudioBar::up); }

void DecreaseAudio() { Change(&AudioBar::down); }

}  // namespace quorvex
