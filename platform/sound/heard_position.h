// Which frame of a wave device's sound is being heard. What a device tells is coarse, and may count what only
// lies in its buffers; what is heard goes on evenly, unless the device has run dry.
#pragma once

#include <algorithm>
#include <cstdint>

#include "platform/common/media_time.h"

namespace quorvex {

class HeardPosition {
 public:
  explicit HeardPosition(int framesPerSecond) : rate(framesPerSecond) {}

  // The device gets its first frame.
  void Start(MediaTime now) {
    last = now;
    heard = -Frames(kStartUp);
  }

  // The device told now that it has played `told` frames. That is at least what is heard, and at most what is
  // heard and in its buffers.
  void Update(MediaTime now, std::int64_t told) {
    const std::int64_t counted = heard + Frames(now - last);
    heard = std::clamp(counted, std::min(told, told - Frames(kBuffered)), told);
    last = now;
  }

  // When a frame is heard, or was.
  [[nodiscard]] MediaTime TimeOf(std::int64_t frame) const {
    return last + Rescale(frame - heard, kSecond, rate);
  }

 private:
  // From the first frame until it is heard; and the most that Wine counts as played before it is.
  static constexpr MediaTime kStartUp = 10 * kMillisecond;
  static constexpr MediaTime kBuffered = 120 * kMillisecond;

  [[nodiscard]] std::int64_t Frames(MediaTime time) const { return Rescale(time, rate, kSecond); }

  int rate;
  MediaTime last = 0;
  std::int64_t heard = 0;
};

}  // namespace quorvex
