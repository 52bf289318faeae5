// Places and lengths on a disc in MCI's time formats.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "platform/cd/disc_plan.h"

namespace quorvex {

// With the numbers that MCI gives them.
enum class TimeFormat : std::uint32_t { kMilliseconds = 0, kMsf = 2, kTmsf = 10 };

// The disc as far as times need it.
struct DiscTimes {
  std::span<const DiscTrack> tracks;
  int leadOut = 0;

  // The track (from 1) that a frame belongs to: the pause before a track is the end of the one before.
  [[nodiscard]] int TrackAt(int frame) const;
};

// A place, given in frames, as a number of the format. Minutes and milliseconds count from two seconds before
// the program area, TMSF from the start of the track.
std::uint32_t PackPlace(const DiscTimes& disc, TimeFormat format, int frame);

// A length as a number of the format; TMSF shows lengths as minutes, seconds and frames.
std::uint32_t PackLength(TimeFormat format, int frames);

// The frame that a number of the format names; nothing when it lies on no track of the disc. The end of the
// disc, or of a track, is a place too.
std::optional<int> UnpackPlace(const DiscTimes& disc, TimeFormat format, std::uint32_t value);

}  // namespace quorvex
