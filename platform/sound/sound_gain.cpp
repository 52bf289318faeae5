#include "platform/sound/sound_gain.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace quorvex {
namespace {

int Factor(int hundredths) {
  if (hundredths <= kSilentVolume) return 0;
  return static_cast<int>(std::lround(SoundGain::kUnity * std::pow(10.0, hundredths / 2000.0)));
}

int Scaled(int sample, int factor) {
  return static_cast<int>(std::int64_t{sample} * factor / SoundGain::kUnity);
}

// Samples are bytes around `middle`, or words around 0.
template <typename Sample>
void Scale(std::span<std::byte> sound, int channels, std::array<int, 2> factors, int middle) {
  for (std::size_t at = 0, channel = 0; at + sizeof(Sample) <= sound.size(); at += sizeof(Sample)) {
    Sample sample = 0;
    std::memcpy(&sample, &sound[at], sizeof sample);
    sample = static_cast<Sample>(middle + Scaled(sample - middle, factors[channel]));
    std::memcpy(&sound[at], &sample, sizeof sample);
    channel = (channel + 1) % static_cast<std::size_t>(channels);
  }
}

}  // namespace

SoundGain GainOf(int volume, int balance) {
  return {Factor(volume - std::max(balance, 0)), Factor(volume + std::min(balance, 0))};
}

void ApplyGain(std::span<std::byte> sound, const WaveFormat& format, const SoundGain& gain) {
  if (gain.left == SoundGain::kUnity && gain.right == SoundGain::kUnity) return;
  std::array<int, 2> factors{gain.left, gain.right};
  if (format.channels == 1) factors.fill(std::max(gain.left, gain.right));
  if (format.bits == 8) {
    Scale<std::uint8_t>(sound, format.channels, factors, 0x80);
  } else {
    Scale<std::int16_t>(sound, format.channels, factors, 0);
  }
}

}  // namespace quorvex
