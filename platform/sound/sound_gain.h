// Volume and balance of a stream of sound, by its samples.
#pragma once

#include <cstddef>
#include <span>

#include "platform/common/wave_format.h"

namespace quorvex {

constexpr int kSilentVolume = -10000;  // hundredths of a decibel; 0 is full
constexpr int kFullBalance = 10000;    // to one side: the other is that much softer

// What samples of the left and right channel are multiplied with; kUnity leaves them as they are.
struct SoundGain {
  static constexpr int kUnity = 1 << 16;
  int left = kUnity;
  int right = kUnity;
};

// `volume` from kSilentVolume to 0, `balance` from -kFullBalance (left only) to kFullBalance.
SoundGain GainOf(int volume, int balance);

// One channel hears the louder one of the two.
void ApplyGain(std::span<std::byte> sound, const WaveFormat& format, const SoundGain& gain);

}  // namespace quorvex
