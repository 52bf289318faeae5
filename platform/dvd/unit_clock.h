// The continuous time of what is read from a disc. Its video units carry times of their own, which jump
// wherever the disc was put together; here they follow each other without a gap.
#pragma once

#include <cstdint>
#include <optional>

#include "platform/dvd/dvd_time.h"

namespace quorvex {

class UnitClock {
 public:
  // What follows has nothing to do with what was before.
  void Restart() {
    current = {};
    before = {};
    begun = false;
  }

  // The next unit begins, with the times that it carries. `speed`: it is over in that much less time.
  void Begin(std::uint32_t start, std::uint32_t end, double speed = 1.0) {
    const DvdTicks carried = end > start && end - start < kLongest ? end - start : kUsual;
    before = current;
    if (begun) {
      const DvdTicks gap = static_cast<DvdTicks>(start) - static_cast<DvdTicks>(current.end);
      current.play += current.length + (gap > 0 && gap < kSmallGap && speed == 1.0 ? gap : 0);
    }
    current.start = start;
    current.end = start + carried;
    current.speed = speed;
    current.length = static_cast<DvdTicks>(static_cast<double>(carried) / speed);
    begun = true;
  }

  // The continuous time at which the unit begins.
  [[nodiscard]] DvdTicks Start() const { return current.play; }

  // The continuous time of a time stamp: by this unit, or by the one before when it fits only there. None
  // when it fits nowhere.
  [[nodiscard]] std::optional<DvdTicks> Time(std::int64_t stamp) const {
    for (const Unit* unit : {&current, &before}) {
      const DvdTicks offset = stamp - static_cast<DvdTicks>(unit->start);
      if (begun && offset > -kFar && offset < kFar)
        return unit->play + static_cast<DvdTicks>(static_cast<double>(offset) / unit->speed);
    }
    return std::nullopt;
  }

 private:
  struct Unit {
    std::int64_t start = -kFar * 8;  // as carried
    std::int64_t end = 0;
    DvdTicks play = 0;  // when it begins in continuous time
    DvdTicks length = 0;
    double speed = 1.0;
  };

  static constexpr DvdTicks kUsual = kTicksPerSecond / 2;
  static constexpr DvdTicks kLongest = 20 * kTicksPerSecond;
  static constexpr DvdTicks kSmallGap = kTicksPerSecond / 5;
  static constexpr DvdTicks kFar = 5 * kTicksPerSecond;

  Unit current;
  Unit before;
  bool begun = false;
};

}  // namespace quorvex
