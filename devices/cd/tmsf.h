// Positions on an audio disc as MCI's TMSF time format packs them: track, minutes, seconds and frames of the
// track, a byte each.
#pragma once

#include <cstdint>

namespace quorvex {

struct Tmsf {
  int track = 0;
  int minutes = 0;
  int seconds = 0;
  int frames = 0;

  static constexpr Tmsf Unpack(std::uint32_t packed) {
    return {static_cast<int>(packed & 0xFFU), static_cast<int>(packed >> 8 & 0xFFU),
            static_cast<int>(packed >> 16 & 0xFFU), static_cast<int>(packed >> 24)};
  }
  [[nodiscard]] constexpr std::uint32_t Pack() const {
    const auto byte = [](int value) { return static_cast<std::uint32_t>(value) & 0xFFU; };
    return byte(track) | byte(minutes) << 8 | byte(seconds) << 16 | byte(frames) << 24;
  }
  friend constexpr bool operator==(const Tmsf&, const Tmsf&) = default;
};

// The length in whole seconds that MCI reports as minutes (byte 0) and seconds (byte 1); frames are dropped.
constexpr int LengthInSeconds(std::uint32_t msf) {
  return static_cast<int>(msf & 0xFFU) * 60 + static_cast<int>(msf >> 8 & 0xFFU);
}

// One second on within a track of `length` seconds; from its end to its start.
constexpr Tmsf StepForward(Tmsf position, int length) {
  const int next = position.minutes * 60 + position.seconds + 1;
  return next >= length ? Tmsf{position.track, 0, 0, 0} : Tmsf{position.track, next / 60, next % 60, 0};
}

// One second back within a track of `length` seconds; from its start to its end.
constexpr Tmsf StepBack(Tmsf position, int length) {
  const int previous = position.minutes * 60 + position.seconds - 1;
  const int seconds = previous < 0 ? length : previous;
  return {position.track, seconds / 60, seconds % 60, 0};
}

}  // namespace quorvex
