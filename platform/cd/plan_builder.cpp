#include "platform/cd/plan_builder.h"

#include <algorithm>

namespace quorvex {

void PlanBuilder::Append(int length, int source, std::int64_t offset, int sectorBytes) {
  length = std::min(length, kMostFrames + 1 - plan.leadOut);  // enough to see that it is too much
  if (length <= 0) return;
  plan.extents.push_back({plan.leadOut, length, source, offset, sectorBytes});
  plan.leadOut += length;
}

std::optional<std::string> PlanBuilder::AddSource(DiscSource source, const SourceOpener& open) {
  const auto same = std::find_if(plan.sources.begin(), plan.sources.end(), [&](const DiscSource& known) {
    return known.name == source.name && known.format == source.format;
  });
  lastSource = static_cast<int>(same - plan.sources.begin());
  if (same != plan.sources.end()) return std::nullopt;
  std::string why;
  if (!open(source, why)) return why;
  plan.sources.push_back(std::move(source));
  return std::nullopt;
}

int PlanBuilder::FramesLeft(int source, std::int64_t offset, int sectorBytes) const {
  return FramesIn(std::max<std::int64_t>(BytesOf(source) - offset, 0), sectorBytes);
}

std::variant<DiscPlan, DiscError> PlanBuilder::Finish() {
  if (plan.tracks.empty()) return DiscError{"it has no tracks"};
  if (static_cast<int>(plan.tracks.size()) > kMostTracks) return DiscError{"a disc has at most 99 tracks"};
  if (plan.leadOut > kMostFrames) return DiscError{"a disc holds at most 99 minutes"};
  int end = plan.leadOut;
  for (std::size_t i = plan.tracks.size(); i-- > 0;) {
    DiscTrack& track = plan.tracks[i];
    track.length = end - track.start;
    if (track.length < 0) return DiscError{"a track begins behind the next"};
    end = track.start;
  }
  return std::move(plan);
}

}  // namespace quorvex
