// Lets a stream's samples through from one time to another, as an application orders them.
#pragma once

#include <cstdint>
#include <limits>
#include <optional>

#include "platform/common/media_time.h"

namespace quorvex {

class StreamGate {
 public:
  static constexpr MediaTime kNow = std::numeric_limits<MediaTime>::min();
  static constexpr MediaTime kNever = std::numeric_limits<MediaTime>::max();

  // An order that is still to be carried out.
  struct Waiting {
    MediaTime time;
    std::uint32_t cookie;
  };

  // What a sample made the gate do, with the cookie of the order.
  struct Turned {
    bool open = false;
    std::uint32_t cookie = 0;
  };

  // Orders for a time of the stream; kNever takes back what was ordered. A stream that is to start later
  // stands still until then.
  void StartAt(MediaTime time, std::uint32_t cookie) { Order(start, time, cookie); }
  void StopAt(MediaTime time, std::uint32_t cookie) { Order(stop, time, cookie); }

  // A sample of this time comes; whether it may pass is told by IsOpen afterwards.
  std::optional<Turned> Pass(MediaTime time) {
    if (stop && time >= stop->time) {
      if (start && start->time <= stop->time) start.reset();
      return Turn(stop, false);
    }
    if (start && time >= start->time) return Turn(start, true);
    if (start && (!stop || start->time <= stop->time)) open = false;
    return std::nullopt;
  }

  [[nodiscard]] bool IsOpen() const { return open; }
  [[nodiscard]] const std::optional<Waiting>& Start() const { return start; }
  [[nodiscard]] const std::optional<Waiting>& Stop() const { return stop; }

 private:
  static void Order(std::optional<Waiting>& order, MediaTime time, std::uint32_t cookie) {
    order = time == kNever ? std::nullopt : std::optional(Waiting{time, cookie});
  }
  std::optional<Turned> Turn(std::optional<Waiting>& order, bool opens) {
    const Turned turned{opens, order->cookie};
    order.reset();
    const bool changed = open != opens;
    open = opens;
    return changed ? std::optional(turned) : std::nullopt;
  }

  bool open = true;
  std::optional<Waiting> start;
  std::optional<Waiting> stop;
};

}  // namespace quorvex
