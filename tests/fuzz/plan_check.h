// What every plan of a disc promises, so that whoever plays it need not look.
#pragma once

#include <variant>

#include "base/text.h"
#include "platform/cd/sheet_reader.h"
#include "tests/fuzz/fuzz_target.h"

namespace quorvex {

inline void CheckExtents(const DiscPlan& plan) {
  int at = 0;
  for (const DiscExtent& extent : plan.extents) {
    Require(extent.start == at && extent.length > 0, "stretches follow each other");
    Require(extent.offset >= 0 && extent.source < static_cast<int>(plan.sources.size()),
            "stretches have a source");
    if (extent.source >= 0) {
      const std::int64_t lastSector = extent.offset + std::int64_t{extent.length - 1} * extent.sectorBytes;
      Require(lastSector < plan.sources[static_cast<std::size_t>(extent.source)].dataBytes,
              "stretches lie within their file");
    }
    at += extent.length;
  }
  Require(at == plan.leadOut && at <= kMostFrames, "the lead-out is where the stretches end");
}

inline void CheckTracks(const DiscPlan& plan) {
  Require(!plan.tracks.empty() && plan.tracks.size() <= kMostTracks, "there are tracks");
  for (std::size_t i = 0; i < plan.tracks.size(); ++i) {
    const DiscTrack& track = plan.tracks[i];
    const int end = i + 1 < plan.tracks.size() ? plan.tracks[i + 1].start : plan.leadOut;
    Require(track.start >= 0 && track.length >= 0 && track.start + track.length == end,
            "tracks follow each other up to the lead-out");
  }
}

inline void CheckPlan(const std::variant<DiscPlan, DiscError>& result) {
  if (const auto* error = std::get_if<DiscError>(&result)) {
    Require(!error->text.empty(), "an error says why");
    return;
  }
  CheckExtents(std::get<DiscPlan>(result));
  CheckTracks(std::get<DiscPlan>(result));
}

// The files that a sheet may name: as many bytes as the number that their name begins with.
inline bool OpenSized(DiscSource& source, std::string& why) {
  source.dataBytes = LeadingNumber(source.name);
  if (source.dataBytes == 0) why = "no " + source.name;
  return source.dataBytes > 0;
}

}  // namespace quorvex
