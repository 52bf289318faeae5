// The sound adjusted by the arrow keys: which of its values, and the level bar that shows it over the current
// device's picture.
#pragma once

namespace quorvex {

// Whether adjustmentInfo is one of the sound (volume, balance, bass, treble), not of the picture.
bool IsAudioAdjustment();

// The Audio Adjustment key: shows the bar of the volume, or takes an audio bar away. When the speaker line
// has no such control the display says so, and there is no bar.
void ShowAudioAdjustment();

// While an audio bar is shown. The next one: volume, balance, bass, treble, volume ...; those that the
// speaker line has no control for are passed over.
void NextAudioAdjustment();
void PreviousAudioAdjustment();
void IncreaseAudio();
void DecreaseAudio();

}  // namespace quorvex
