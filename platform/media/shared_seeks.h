// Tells repeated seeks apart. The filter graph hands one seek to every renderer, and each hands it up to the
// pin that feeds it: it arrives at every pin, and is done once.
#pragma once

#include <optional>

#include "platform/common/media_time.h"

namespace quorvex {

// Where a seek leads, as it was asked for; what it does not name stays as it is.
struct SeekWish {
  struct Place {
    MediaTime at;
    bool relative;  // to the place reached; the stop position, to the stop position before
    friend bool operator==(const Place&, const Place&) = default;
  };
  std::optional<Place> start;
  std::optional<Place> stop;
  bool stopCountsFromStart = false;
  friend bool operator==(const SeekWish&, const SeekWish&) = default;
};

class SharedSeeks {
 public:
  // A seek arrives at a pin (0 to 31). Whether it is to be done: not when it is the last one, and
  // comes to this pin for the first time.
  bool Arrives(int pin, const SeekWish& wish) {
    const unsigned bit = 1U << static_cast<unsigned>(pin);
    if (last == wish && (seenBy & bit) == 0) {
      seenBy |= bit;
      return false;
    }
    last = wish;
    seenBy = bit;
    return true;
  }

  // Something else has happened since: whatever arrives next is a new seek.
  void Forget() { last.reset(); }

 private:
  std::optional<SeekWish> last;
  unsigned seenBy = 0;
};

}  // namespace quorvex
