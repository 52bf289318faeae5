// The sound of the system's first mixer device: volume, balance, bass, treble and mute of its speaker line,
// whatever plays.
#pragma once

#include <cstdint>

#include "mixer/audio_levels.h"
#include "mixer/mixer_functions.h"

namespace quorvex {

// Whether the Mute key has muted the sound; false at the start, whatever the mixer holds.
extern bool muted;

// Opens the first mixer device and reads its lines, through these functions (they must live as long as the
// mixer is used). False when there is no mixer or it cannot be read: every operation then answers 0.
bool OpenMixer(const MixerFunctions& functions = kWinmmMixer);

// Whether the speaker line has the control that an operation needs.
bool HasAudioControl(AudioOperation operation);

// Whether volume is more than one value for all speakers, so that there is a balance to change.
bool HasBalance();

// Does an operation of volume or balance and answers the value, as it is meant to be then; 0 without a mixer
// or control. What a driver refuses is seen at the next reading.
std::uint32_t VolumeBalance(AudioOperation operation);

// The same of bass and treble.
std::uint32_t ToneControl(AudioOperation operation);

// Mutes the sound, or ends that, and shows it on lamp and button. False, and nothing changes, when there is
// no mute control.
bool ToggleMute();

}  // namespace quorvex
