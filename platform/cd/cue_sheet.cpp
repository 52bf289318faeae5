#include "platform/cd/cue_sheet.h"

#include <array>
#include <vector>

#include "base/text.h"
#include "platform/cd/plan_builder.h"

namespace quorvex {
namespace {

struct TrackMode {
  std::string_view name;
  bool audio;
  int sectorBytes;
};
constexpr std::array kModes{
    TrackMode{"AUDIO", true, 2352},       TrackMode{"CDG", true, 2448},
    TrackMode{"MODE1/2048", false, 2048}, TrackMode{"MODE1/2352", false, 2352},
    TrackMode{"MODE2/2048", false, 2048}, TrackMode{"MODE2/2324", false, 2324},
    TrackMode{"MODE2/2336", false, 2336}, TrackMode{"MODE2/2352", false, 2352},
    TrackMode{"CDI/2336", false, 2336},   TrackMode{"CDI/2352", false, 2352},
};

struct FileFormat {
  std::string_view name;
  DiscSource::Format format;
};
constexpr std::array kFormats{
    FileFormat{"BINARY", DiscSource::Format::kRaw},
    FileFormat{"MOTOROLA", DiscSource::Format::kSwappedRaw},
    FileFormat{"WAVE", DiscSource::Format::kWave},
};

template <typename Row, std::size_t kSize>
const Row* FindNoCase(const std::array<Row, kSize>& table, std::string_view name) {
  for (const Row& row : table) {
    if (EqualNoCase(row.name, name)) return &row;
  }
  return nullptr;
}

struct SheetTrack {
  const TrackMode* mode;
  int pregap = 0;   // silent frames that no file holds, in front of the track's first index
  int postgap = 0;  // and behind the track
  bool indexed = false;
};

// An INDEX 00 or 01: a place in a file, in frames.
struct Mark {
  int track;
  bool startsTrack;  // it is the track's first
  bool isStart;      // it is index 1, where the track begins to play
  int source;
  int frame;
};

class CueParser {
 public:
  CueParser(std::string_view sheet, const SourceOpener& opener) : reader(sheet, false), open(opener) {}

  std::variant<DiscPlan, DiscError> Plan() {
    do {
      const std::optional<std::string> command = reader.WordOfLine();
      if (command && !Run(*command)) return error;
    } while (reader.NextLine());
    if (!EndTrack() || !LayOut()) return error;
    return builder.Finish();
  }

 private:
  bool Fail(const std::string& text) {
    error = reader.Complaint(text);
    return false;
  }

  // Titles, remarks and flags do not concern the layout.
  bool Run(const std::string& command) {
    if (EqualNoCase(command, "FILE")) return AddFile();
    if (EqualNoCase(command, "TRACK")) return AddTrack();
    if (EqualNoCase(command, "INDEX")) return AddIndex();
    if (EqualNoCase(command, "PREGAP")) return SetGap(&SheetTrack::pregap);
    if (EqualNoCase(command, "POSTGAP")) return SetGap(&SheetTrack::postgap);
    return true;
  }

  bool AddFile() {
    const std::optional<std::string> name = reader.WordOfLine();
    const std::optional<std::string> kind = reader.WordOfLine();
    if (!name || !kind) return Fail("FILE needs a name and a format");
    const FileFormat* format = FindNoCase(kFormats, *kind);
    if (format == nullptr)
      return Fail("files of the format " + *kind + " cannot be read; BINARY, MOTOROLA and WAVE can");
    const std::optional<std::string> why = builder.AddSource({*name, format->format, 0, 0}, open);
    return !why || Fail(*why);
  }

  bool AddTrack() {
    if (!EndTrack()) return false;
    const std::string number = reader.WordOfLine().value_or("");
    const std::string mode = reader.WordOfLine().value_or("");
    if (builder.LastSource() < 0) return Fail("TRACK comes before any FILE");
    const TrackMode* found = FindNoCase(kModes, mode);
    if (found == nullptr) return Fail("unknown track mode \"" + mode + '"');
    tracks.push_back({found});
    return true;
  }

  // What a track must have when the next one, or the end of the sheet, comes.
  bool EndTrack() {
    const bool complete = tracks.empty() || (!marks.empty() && marks.back().isStart);
    return complete || Fail("the track before has no INDEX 01");
  }

  bool AddIndex() {
    const std::string number = reader.WordOfLine().value_or("");
    const std::optional<int> time = ParseMsf(reader.WordOfLine().value_or(""));
    if (tracks.empty()) return Fail("INDEX comes before any TRACK");
    if (!time) return Fail("INDEX needs a number and a time mm:ss:ff");
    if (LeadingNumber(number) > 1) return true;
    SheetTrack& current = tracks.back();
    const int index = static_cast<int>(tracks.size()) - 1;
    marks.push_back({index, !current.indexed, LeadingNumber(number) == 1, builder.LastSource(), *time});
    current.indexed = true;
    return true;
  }

  bool SetGap(int SheetTrack::*gap) {
    const std::optional<int> time = ParseMsf(reader.WordOfLine().value_or(""));
    if (tracks.empty()) return Fail("a gap comes before any TRACK");
    if (!time) return Fail("a gap needs a time mm:ss:ff");
    tracks.back().*gap = *time;
    return true;
  }

  // The disc is its files one behind the other, each whole; what lies between two marks belongs to the track
  // of the first.
  bool LayOut() {
    for (const Mark& mark : marks) {
      const bool sameFile = mark.source == source;
      if (!sameFile) {
        EndFile();
        source = mark.source;
      }
      if (sameFile && !AdvanceTo(mark.frame)) return false;
      if (mark.startsTrack) BeginTrack(mark.track);
      if (!sameFile && !AdvanceTo(mark.frame)) return false;
      if (mark.isStart) builder.BeginTrack(Current().mode->audio);
    }
    EndFile();
    if (track >= 0) builder.AppendSilence(Current().postgap);
    return true;
  }

  void BeginTrack(int next) {
    if (track >= 0) builder.AppendSilence(Current().postgap);
    track = next;
    builder.AppendSilence(Current().pregap);
  }

  [[nodiscard]] const SheetTrack& Current() const { return tracks[static_cast<std::size_t>(track)]; }

  bool AdvanceTo(int next) {
    const int length = next - frame;
    if (length < 0 || length > builder.FramesLeft(source, offset, Current().mode->sectorBytes)) {
      error = {"track " + std::to_string(track + 1) + " does not lie within its file"};
      return false;
    }
    Take(length);
    return true;
  }

  void EndFile() {
    if (source >= 0) Take(builder.FramesLeft(source, offset, Current().mode->sectorBytes));
    offset = 0;
    frame = 0;
  }

  void Take(int length) {
    const int sectorBytes = Current().mode->sectorBytes;
    builder.Append(length, source, offset, sectorBytes);
    offset += static_cast<std::int64_t>(length) * sectorBytes;
    frame += length;
  }

  SheetReader reader;
  const SourceOpener& open;
  PlanBuilder builder;
  DiscError error;
  std::vector<SheetTrack> tracks;
  std::vector<Mark> marks;

  // How far the layout has come: the track, and the place in its file.
  int track = -1;
  int source = -1;
  int frame = 0;
  std::int64_t offset = 0;
};

}  // namespace

std::variant<DiscPlan, DiscError> PlanCueSheet(std::string_view sheet, const SourceOpener& open) {
  return CueParser(sheet, open).Plan();
}

}  // namespace quorvex
