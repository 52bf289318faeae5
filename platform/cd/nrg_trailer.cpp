#include "platform/cd/nrg_trailer.h"

#include <algorithm>
#include <array>

#include "platform/cd/plan_builder.h"

namespace quorvex {
namespace {

std::uint64_t BigEndian(std::string_view bytes) {
  std::uint64_t number = 0;
  for (const char byte : bytes) number = number << 8 | static_cast<unsigned char>(byte);
  return number;
}

struct TrackMode {
  std::uint64_t number;
  bool audio;
  int sectorBytes;
};
constexpr std::array<TrackMode, 9> kModes{{{0x00, false, 2048},
                                           {0x02, false, 2048},
                                           {0x03, false, 2336},
                                           {0x05, false, 2352},
                                           {0x06, false, 2352},
                                           {0x07, true, 2352},
                                           {0x0F, false, 2448},
                                           {0x10, true, 2448},
                                           {0x11, false, 2448}}};

// The two kinds of track tables, each with offsets of 32 or of 64 bits: a disc written in one go (DAOI, DAOX)
// or track by track (ETNF, ETN2).
struct TableLayout {
  std::string_view chunk;
  bool inOneGo;
  std::size_t headBytes;
  std::size_t rowBytes;
  std::size_t offsetBytes;
};
constexpr std::array<TableLayout, 4> kTables{{{"DAOI", true, 22, 30, 4},
                                              {"DAOX", true, 22, 42, 8},
                                              {"ETNF", false, 0, 20, 4},
                                              {"ETN2", false, 0, 32, 8}}};

// Where a track's sectors lie in the file, in bytes.
struct TrackPlace {
  const TrackMode* mode;
  std::uint64_t pause;  // index 0; the same as `start` when no pause is stored
  std::uint64_t start;  // index 1
  std::uint64_t end;
};

class TrailerParser {
 public:
  std::variant<DiscPlan, DiscError> Parse(std::string_view rest, const std::string& name,
                                          const SourceOpener& open) {
    if (const std::optional<std::string> problem = builder.AddSource({name}, open))
      return DiscError{*problem};
    fileBytes = static_cast<std::uint64_t>(builder.BytesOf(0));
    while (rest.size() >= 8) {
      const std::string_view chunk = rest.substr(0, 4);
      const std::uint64_t size = BigEndian(rest.substr(4, 4));
      if (chunk == "END!") break;
      rest.remove_prefix(8);
      if (size > rest.size()) return DiscError{"its trailer is cut short"};
      for (const TableLayout& table : kTables) {
        if (chunk == table.chunk && !ReadTable(table, rest.substr(0, size)))
          return DiscError{"its table of tracks makes no sense"};
      }
      rest.remove_prefix(size);
    }
    return builder.Finish();
  }

 private:
  bool ReadTable(const TableLayout& table, std::string_view data) {
    if (data.size() < table.headBytes || (data.size() - table.headBytes) % table.rowBytes != 0) return false;
    data.remove_prefix(table.headBytes);
    for (; !data.empty(); data.remove_prefix(table.rowBytes)) {
      const TrackPlace place = table.inOneGo ? PlaceInOneGo(table, data) : PlaceByTrack(table, data);
      const bool sound = place.mode != nullptr && place.pause <= place.start && place.start <= place.end &&
                         place.end <= fileBytes;
      if (!sound) return false;
      AppendTrack(place, table.inOneGo);
    }
    return true;
  }

  static TrackPlace PlaceInOneGo(const TableLayout& table, std::string_view row) {
    const auto offset = [&](std::size_t index) {
      return BigEndian(row.substr(18 + index * table.offsetBytes, table.offsetBytes));
    };
    return {FindMode(BigEndian(row.substr(14, 1))), offset(0), offset(1), offset(2)};
  }

  static TrackPlace PlaceByTrack(const TableLayout& table, std::string_view row) {
    const std::uint64_t start = BigEndian(row.substr(0, table.offsetBytes));
    const std::uint64_t length = BigEndian(row.substr(table.offsetBytes, table.offsetBytes));
    return {FindMode(BigEndian(row.substr(2 * table.offsetBytes, 4))), start, start, start + length};
  }

  static const TrackMode* FindMode(std::uint64_t number) {
    const auto* found = std::find_if(kModes.begin(), kModes.end(),
                                     [number](const TrackMode& mode) { return mode.number == number; });
    return found == kModes.end() ? nullptr : found;
  }

  void AppendTrack(const TrackPlace& place, bool inOneGo) {
    const bool first = tracks++ == 0;
    if (inOneGo) {
      // The first track's pause of two seconds lies before the program area.
      const int hidden = first ? std::min(Frames(place.pause, place.start, place), kLeadInFrames) : 0;
      const std::uint64_t pause = place.pause + static_cast<std::uint64_t>(hidden * place.mode->sectorBytes);
      Append(pause, place.start, place);
    } else if (!first) {
      builder.AppendSilence(kLeadInFrames);  // a recorder makes the pause itself
    }
    builder.BeginTrack(place.mode->audio);
    Append(place.start, place.end, place);
  }

  static int Frames(std::uint64_t from, std::uint64_t to, const TrackPlace& place) {
    return FramesIn(static_cast<std::int64_t>(to - from), place.mode->sectorBytes);
  }
  void Append(std::uint64_t from, std::uint64_t to, const TrackPlace& place) {
    builder.Append(Frames(from, to, place), 0, static_cast<std::int64_t>(from), place.mode->sectorBytes);
  }

  PlanBuilder builder;
  std::uint64_t fileBytes = 0;
  int tracks = 0;
};

}  // namespace

std::optional<std::int64_t> NrgTrailerOffset(std::string_view foot) {
  if (foot.size() < kNrgFootBytes) return std::nullopt;
  if (foot.starts_with("NER5")) return static_cast<std::int64_t>(BigEndian(foot.substr(4)));
  if (foot.substr(4).starts_with("NERO")) return static_cast<std::int64_t>(BigEndian(foot.substr(8)));
  return std::nullopt;
}

std::variant<DiscPlan, DiscError> PlanNrgTrailer(std::string_view trailer, const std::string& name,
                                                 const SourceOpener& open) {
  return TrailerParser().Parse(trailer, name, open);
}

}  // namespace quorvex
