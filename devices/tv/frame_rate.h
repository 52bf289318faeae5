// Frame rates, as the driver and the settings count them: the time of a frame in units of 100 ns.
#pragma once

#include <algorithm>
#include <cstdint>

namespace quorvex {

inline constexpr double kUnitsPerSecond = 10'000'000;
inline constexpr double kDefaultFrameRate = 15.0;

// The time of a frame at a rate above 0 (frames a second); at least 1, and no more than the settings can
// hold.
constexpr std::int64_t FrameTimeOf(double framesPerSecond) {
  return static_cast<std::int64_t>(std::clamp(kUnitsPerSecond / framesPerSecond, 1.0, 2147483647.0));
}

// The rate of a stored frame time, with two decimals, the rest cut off; the default where there is none above
// 0.
constexpr double FrameRateOf(std::int32_t frameTime) {
  if (frameTime <= 0) return kDefaultFrameRate;
  const auto hundredths = static_cast<std::int64_t>(kUnitsPerSecond / frameTime * 100);
  return hundredths > 0 ? static_cast<double>(hundredths) / 100 : kDefaultFrameRate;
}

}  // namespace quorvex
