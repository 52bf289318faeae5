// How far a picture's attribute moves with one press of a key.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

namespace quorvex {

// The segments of its level bar, and so the steps of its range.
inline constexpr int kAdjustmentSegments = 31;

// The step of a range; 0 for one that is narrower than the bar has segments.
constexpr std::int32_t AdjustmentStep(std::int32_t minimum, std::int32_t maximum) {
  return static_cast<std::int32_t>((std::int64_t{maximum} - minimum) / kAdjustmentSegments);
}

// A value changed by some steps; the driver says what of it is possible.
constexpr std::int32_t AdjustedValue(std::int32_t value, std::int32_t step, int steps) {
  constexpr std::int64_t kLeast = std::numeric_limits<std::int32_t>::min();
  constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(std::clamp(value + std::int64_t{step} * steps, kLeast, kMost));
}

}  // namespace quorvex
