// Joined files: where one recording ends and another begins, time stamps begin anew or leap. What follows is
// moved to where the streams had come to, all streams alike, so that they stay together.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <optional>

#include "platform/common/media_time.h"

namespace quorvex {

class StreamJoints {
 public:
  // What follows is read from another place.
  void Forget() { *this = {}; }

  // What is to be added to the times of a stream's next packet (stream 0 or 1, in the file's order), which is
  // stamped with `time`.
  MediaTime ShiftOf(std::size_t stream, MediaTime time, MediaTime length) {
    Reach& own = reached[stream];
    const Reach& other = reached[1 - stream];
    if (own.end && !Continues(own, other, time + own.shift)) {
      if (!Continues(own, other, time + latest))
        latest = std::max(*own.end, other.end.value_or(*own.end)) - time;
      own.shift = latest;
    }
    if (!own.end) own.shift = latest;
    const MediaTime end = time + own.shift + std::max<MediaTime>(0, length);
    own.end = std::max(own.end.value_or(end), end);
    return own.shift;
  }

 private:
  // Pictures are stored in another order than they are shown in, by less than this; a stream that has nothing
  // for longer than kPause has stopped, unless the other has come as far.
  static constexpr MediaTime kOutOfOrder = kSecond;
  static constexpr MediaTime kPause = 3 * kSecond;

  struct Reach {
    std::optional<MediaTime> end;
    MediaTime shift = 0;
  };

  static bool Continues(const Reach& own, const Reach& other, MediaTime time) {
    if (time < *own.end - kOutOfOrder) return false;
    return time < *own.end + kPause || (other.end && std::abs(time - *other.end) < kPause);
  }

  std::array<Reach, 2> reached;
  MediaTime latest = 0;
};

}  // namespace quorvex
