// Lays a disc out, stretch by stretch, while a sheet is read.
#pragma once

#include <optional>
#include <string>
#include <variant>

#include "platform/cd/sheet_reader.h"

namespace quorvex {

class PlanBuilder {
 public:
  // A stretch of `length` frames from a file (or DiscExtent::kSilence), beginning at a byte of its data.
  void Append(int length, int source, std::int64_t offset, int sectorBytes);
  void AppendSilence(int length) { Append(length, DiscExtent::kSilence, 0, kAudioSectorBytes); }

  // A track whose index 1 is where the layout has come to.
  void BeginTrack(bool audio) { plan.tracks.push_back({audio, plan.leadOut, 0}); }

  // Puts the current track's index 1 somewhere else.
  void MoveTrackStart(int frame) { plan.tracks.back().start = frame; }

  // Where the layout has come to, in frames.
  [[nodiscard]] int Position() const { return plan.leadOut; }

  // Opens a file and adds it to the sources; says why when it cannot be used.
  std::optional<std::string> AddSource(DiscSource source, const SourceOpener& open);
  // The file added last (a file that the sheet names again is the same source); -1 without any.
  [[nodiscard]] int LastSource() const { return lastSource; }

  // How much data a file holds.
  [[nodiscard]] std::int64_t BytesOf(int source) const {
    return plan.sources[static_cast<std::size_t>(source)].dataBytes;
  }
  // Frames of `sectorBytes` that a file holds from a byte of its data on.
  [[nodiscard]] int FramesLeft(int source, std::int64_t offset, int sectorBytes) const;

  // The finished disc, or why it cannot be one.
  [[nodiscard]] std::variant<DiscPlan, DiscError> Finish();

 private:
  DiscPlan plan;
  int lastSource = -1;
};

}  // namespace quorvex
