// One timeline of samples for everything that is played. A disc's times begin anew again and again; what
// hangs together in time is a stretch, whose times count from anywhere, and each stretch begins when its
// first sample is ready. Shared by the threads that deliver samples.
#pragma once

#include <algorithm>
#include <array>
#include <mutex>
#include <optional>

#include "platform/common/media_time.h"

namespace quorvex {

class Timeline {
 public:
  // So much later than now begins what is ready now: the other stream gets ready meanwhile.
  static constexpr MediaTime kLead = 60 * kMillisecond;
  // Whoever is so late has lost the thread: the disc could not be read, or the machine slept.
  static constexpr MediaTime kLost = kSecond;

  // Where `time` of a stretch lies. The first who asks for a stretch lets it begin. `leads`: the one stream
  // whose being lost counts.
  MediaTime Stamp(int stretch, MediaTime time, MediaTime now, bool leads) {
    const std::scoped_lock lock(mutex);
    Anchor& anchor = anchors[static_cast<std::size_t>(stretch) % anchors.size()];
    const bool known = anchor.stretch == stretch;
    if (!known) {
      anchor = {stretch, std::max(now + kLead, reached) - time};
    } else if (leads && anchor.origin + time < now - kLost) {
      anchor.origin = now + kLead - time;
    }
    return anchor.origin + time;
  }

  // The same for a stretch that has begun.
  std::optional<MediaTime> Find(int stretch, MediaTime time) {
    const std::scoped_lock lock(mutex);
    const Anchor& anchor = anchors[static_cast<std::size_t>(stretch) % anchors.size()];
    return anchor.stretch == stretch ? std::optional(anchor.origin + time) : std::nullopt;
  }

  // A picture was delivered that lasts until `end`: another stretch begins no sooner.
  void Reach(MediaTime end) {
    const std::scoped_lock lock(mutex);
    reached = std::max(reached, end);
  }

  // What was to come is dropped; the stream's time is `now`.
  void Cut(MediaTime now) {
    const std::scoped_lock lock(mutex);
    reached = now;
  }

 private:
  struct Anchor {
    int stretch = -1;
    MediaTime origin = 0;
  };

  std::mutex mutex;  // guards what follows
  // While one stream is still in a stretch the other may be in a later one.
  std::array<Anchor, 4> anchors;
  MediaTime reached = 0;
};

}  // namespace quorvex
