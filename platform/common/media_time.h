// Times of the filter graph (units of 100 ns) and those of streams (ticks of a time base).
#pragma once

#include <cstdint>
#include <limits>
#include <optional>

namespace quorvex {

using MediaTime = std::int64_t;  // units of 100 ns; the platform's REFERENCE_TIME

constexpr MediaTime kSecond = 10'000'000;
constexpr MediaTime kMillisecond = kSecond / 1000;
constexpr MediaTime kForever = std::numeric_limits<MediaTime>::max() / 2;  // far from overflow

// The part of a file that is played; times count from the file's beginning.
struct Segment {
  MediaTime start = 0;
  MediaTime stop = kForever;
  std::optional<MediaTime> origin = {};  // what samples' times count from, where that is not the start
  [[nodiscard]] constexpr MediaTime Origin() const { return origin.value_or(start); }
  friend bool operator==(const Segment&, const Segment&) = default;
};

// value * multiplier / divisor, rounded to the nearest, without overflow in between.
constexpr std::int64_t Rescale(std::int64_t value, std::int64_t multiplier, std::int64_t divisor) {
  const __int128 product = static_cast<__int128>(value) * multiplier;
  const __int128 half = divisor / 2;
  return static_cast<std::int64_t>((product + (product < 0 ? -half : half)) / divisor);
}

// A stream's clock: a tick lasts numerator / denominator seconds, and the file begins at tick `origin`.
struct TickClock {
  int numerator = 1;
  int denominator = 1;
  std::int64_t origin = 0;

  [[nodiscard]] constexpr MediaTime Time(std::int64_t tick) const { return Length(tick - origin); }
  [[nodiscard]] constexpr MediaTime Length(std::int64_t ticks) const {
    return Rescale(ticks, kSecond * numerator, denominator);
  }
  [[nodiscard]] constexpr std::int64_t Tick(MediaTime time) const {
    return origin + Rescale(time, denominator, kSecond * numerator);
  }
};

}  // namespace quorvex
