// The time of each block of decoded sound. Time stamps of containers are coarse and jitter, while samples
// follow each other without a gap: the samples are counted, and a time stamp is believed only when it is far
// off.
#pragma once

#include <optional>

#include "platform/common/media_time.h"

namespace quorvex {

class SoundClock {
 public:
  explicit SoundClock(int samplesPerSecond) : rate(samplesPerSecond) {}

  // What follows begins at another place.
  void Restart() { *this = SoundClock(rate); }

  // The time at which the next block begins. `stamped`: what its time stamp says, if it has one.
  MediaTime Begin(std::optional<MediaTime> stamped) {
    const MediaTime counted = Now();
    if (!anchored || (stamped && (*stamped - counted > kTolerated || counted - *stamped > kTolerated))) {
      anchor = stamped.value_or(counted);
      samples = 0;
      anchored = true;
    }
    return Now();
  }

  // Goes on by the samples of a block.
  void Advance(std::int64_t count) { samples += count; }

  // The time reached.
  [[nodiscard]] MediaTime Now() const { return anchor + Rescale(samples, kSecond, rate); }

 private:
  static constexpr MediaTime kTolerated = 35 * kMillisecond;

  int rate;
  MediaTime anchor = 0;
  std::int64_t samples = 0;
  bool anchored = false;
};

}  // namespace quorvex
