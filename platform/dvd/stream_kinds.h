// How the streams at a place of a disc are made.
#pragma once

#include <optional>

#include "platform/dvd/canvas.h"
#include "platform/dvd/disc_tables.h"
#include "platform/dvd/pack_demuxer.h"
#include "platform/dvd/place.h"

namespace quorvex {

inline StreamAttributes::Part PartOf(const Place& place) {
  return place.domain == DiscDomain::kTitle ? StreamAttributes::Part::kTitle : StreamAttributes::Part::kMenu;
}

inline VideoShape ShapeAt(const DiscTables& tables, const Place& place) {
  const StreamAttributes& attributes = tables.Of(place.titleSet);
  return {attributes.IsWide(PartOf(place)), attributes.IsPal(PartOf(place))};
}

// How the sound that is chosen is coded; none when the disc does not say. Streams of different codings may
// carry the same number.
inline std::optional<DvdStreamKind> SoundKindAt(const DiscTables& tables, const Place& place) {
  const StreamAttributes& attributes = tables.Of(place.titleSet);
  if (place.audio < 0 || place.audio >= attributes.AudioCount(PartOf(place))) return std::nullopt;
  switch (attributes.AudioOf(PartOf(place), place.audio)[0] >> 5) {
    case 0: return DvdStreamKind::kAc3;
    case 2:
    case 3: return DvdStreamKind::kMpegAudio;
    case 4: return DvdStreamKind::kLpcm;
    case 6: return DvdStreamKind::kDts;
    default: return std::nullopt;
  }
}

}  // namespace quorvex
