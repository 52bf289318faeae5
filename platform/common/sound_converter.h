// Turns decoded sound into 16 bits, two channels, at one rate.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "platform/common/av.h"

namespace quorvex {

constexpr int kSoundChannels = 2;

// Samples of both channels, interleaved.
using SoundSamples = std::span<const std::int16_t>;

class SoundConverter {
 public:
  explicit SoundConverter(int samplesPerSecond) : rate(samplesPerSecond) {}

  // What follows begins at another place.
  void Reset() { sourceFormat = -1; }

  // The frame's sound, until the next call; nothing when it cannot be converted.
  SoundSamples Convert(const AVFrame& frame);

 private:
  bool PrepareResampler(const AVFrame& frame);

  const int rate;
  AvOwner<SwrContext> resampler;
  int sourceFormat = -1;  // what the resampler was made for
  int sourceRate = 0;
  int sourceChannels = 0;
  std::vector<std::int16_t> converted;
};

}  // namespace quorvex
