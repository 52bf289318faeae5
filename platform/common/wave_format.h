// How plain sound lies in memory.
#pragma once

#include <cstddef>

namespace quorvex {

// Interleaved samples of 8 bits (without sign) or 16.
struct WaveFormat {
  int rate = 44100;
  int channels = 2;
  int bits = 16;

  [[nodiscard]] constexpr int FrameBytes() const { return channels * bits / 8; }
  [[nodiscard]] constexpr std::byte Silence() const { return std::byte(bits == 8 ? 0x80 : 0); }
  friend bool operator==(const WaveFormat&, const WaveFormat&) = default;
};

}  // namespace quorvex
