#include "platform/cd/play_range.h"

#include <algorithm>

namespace quorvex {

std::optional<PlayEnd> EndOfPlay(const DiscTimes& disc, int from, int to, int unreadableTrack) {
  const int first = disc.TrackAt(from);
  for (int track = first; track <= static_cast<int>(disc.tracks.size()); ++track) {
    const DiscTrack& candidate = disc.tracks[static_cast<std::size_t>(track - 1)];
    if (candidate.audio && track != unreadableTrack) continue;
    if (track == first) return std::nullopt;
    return PlayEnd{std::min(to, candidate.start), to > candidate.start && candidate.audio};
  }
  return PlayEnd{std::min(to, disc.leadOut), false};
}

}  // namespace quorvex
