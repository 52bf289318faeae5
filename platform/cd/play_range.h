// How far a disc can be played from a place.
#pragma once

#include <optional>

#include "platform/cd/time_format.h"

namespace quorvex {

struct PlayEnd {
  int frame;
  bool badly;  // the next track cannot be read
};

// Where playing from a frame ends when it is asked to end at `to`: there, or where the sound ends before a
// data track or an unreadable one (from 1; 0 for none). Nothing when there is no sound to play at `from`.
std::optional<PlayEnd> EndOfPlay(const DiscTimes& disc, int from, int to, int unreadableTrack);

}  // namespace quorvex
