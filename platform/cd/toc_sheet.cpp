#include "platform/cd/toc_sheet.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "base/text.h"
#include "platform/cd/plan_builder.h"

namespace quorvex {
namespace {

constexpr int kSamplesPerFrame = 588;
constexpr int kSampleBytes = 4;

struct TrackMode {
  std::string_view name;
  int sectorBytes;
};
constexpr std::array kModes{
    TrackMode{"AUDIO", 2352},       TrackMode{"MODE1", 2048},          TrackMode{"MODE1_RAW", 2352},
    TrackMode{"MODE2", 2336},       TrackMode{"MODE2_RAW", 2352},      TrackMode{"MODE2_FORM1", 2048},
    TrackMode{"MODE2_FORM2", 2324}, TrackMode{"MODE2_FORM_MIX", 2336},
};

// One that is beyond every file counts as just so large, so that it can be reckoned with.
std::optional<std::int64_t> ParseNumber(std::string_view text) {
  constexpr std::int64_t kBeyondAnyFile = std::int64_t{1} << 56;
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool isOne = error == std::errc() && end == text.data() + text.size() && number >= 0;
  return isOne ? std::optional(std::min(number, kBeyondAnyFile)) : std::nullopt;
}

class TocParser {
 public:
  TocParser(std::string_view sheet, const SourceOpener& opener) : reader(sheet, true), open(opener) {}

  std::variant<DiscPlan, DiscError> Plan() {
    while (const std::optional<std::string> word = NextWord()) {
      if (!Run(*word)) return error;
    }
    return builder.Finish();
  }

 private:
  bool Fail(const std::string& text) {
    error = reader.Complaint(text);
    return false;
  }

  // A word that an optional argument turned out not to be comes first.
  std::optional<std::string> NextWord() {
    if (pushedBack) return std::exchange(pushedBack, std::nullopt);
    return reader.Word();
  }

  // Disc types, copy and emphasis flags do not concern the layout.
  bool Run(const std::string& word) {
    if (word == "TRACK") return AddTrack();
    if (word == "AUDIOFILE" || word == "FILE") return AddAudioFile();
    if (word == "DATAFILE") return AddDataFile();
    if (word == "SILENCE" || word == "ZERO") return AddSilence();
    if (word == "PREGAP") return AddPregap();
    if (word == "START") return SetStart();
    if (word == "{") return SkipBlock();
    if (word == "FIFO") return Fail("FIFO files cannot be read");
    if (word == "CATALOG" || word == "ISRC" || word == "INDEX") NextWord();
    return true;
  }

  // Titles of the disc and of its tracks stand in braces within braces.
  bool SkipBlock() {
    for (int depth = 1; depth > 0;) {
      const std::optional<std::string> word = NextWord();
      if (!word) return Fail("a brace is not closed");
      if (word->starts_with('{') || word->ends_with('{')) ++depth;
      if (word->starts_with('}')) --depth;
    }
    return true;
  }

  bool AddTrack() {
    const std::string name = NextWord().value_or("");
    const auto* found =
        std::find_if(kModes.begin(), kModes.end(), [&](const TrackMode& row) { return row.name == name; });
    if (found == kModes.end()) return Fail("unknown track mode \"" + name + '"');
    mode = found;
    trackBegin = builder.Position();
    builder.BeginTrack(IsAudio());
    return true;
  }

  [[nodiscard]] bool IsAudio() const { return mode == kModes.data(); }

  // A length: a time mm:ss:ff, or samples (sound) or bytes (data), in whole frames.
  [[nodiscard]] std::optional<int> ParseLength(const std::string& word) const {
    if (const std::optional<int> time = ParseMsf(word)) return time;
    const std::optional<std::int64_t> count = ParseNumber(word);
    if (!count) return std::nullopt;
    const std::int64_t perFrame = IsAudio() ? kSamplesPerFrame : mode->sectorBytes;
    return static_cast<int>(std::min<std::int64_t>((*count + perFrame - 1) / perFrame, kMostFrames + 1));
  }

  bool NeedsTrack(const std::string& word) {
    return mode != nullptr || Fail(word + " comes before any TRACK");
  }

  bool AddAudioFile() {
    if (!NeedsTrack("a file")) return false;
    DiscSource source{NextWord().value_or(""), DiscSource::Format::kSwappedRaw, 0, 0};
    std::int64_t offset = 0;
    std::string word = NextWord().value_or("");
    if (word == "SWAP") {
      source.format = DiscSource::Format::kRaw;
      word = NextWord().value_or("");
    }
    if (word.starts_with('#')) {
      offset = ParseNumber(std::string_view(word).substr(1)).value_or(0);
      word = NextWord().value_or("");
    }
    const std::optional<std::int64_t> samples = StartInSamples(word);
    if (!samples) return Fail("a sound file needs a start");
    if (source.name.size() >= 4 && EqualNoCase(source.name.substr(source.name.size() - 4), ".wav"))
      source.format = DiscSource::Format::kWave;
    return AppendFile(source, offset + *samples * kSampleBytes);
  }

  static std::optional<std::int64_t> StartInSamples(const std::string& word) {
    if (const std::optional<int> time = ParseMsf(word)) return std::int64_t{*time} * kSamplesPerFrame;
    return ParseNumber(word);
  }

  bool AddDataFile() {
    if (!NeedsTrack("a file")) return false;
    const DiscSource source{NextWord().value_or(""), DiscSource::Format::kRaw, 0, 0};
    std::int64_t offset = 0;
    if (std::optional<std::string> word = NextWord(); word && word->starts_with('#')) {
      offset = ParseNumber(std::string_view(*word).substr(1)).value_or(0);
    } else {
      pushedBack = word;
    }
    return AppendFile(source, offset);
  }

  // Without a length the stretch goes to the file's end.
  bool AppendFile(const DiscSource& source, std::int64_t offset) {
    if (const std::optional<std::string> why = builder.AddSource(source, open)) return Fail(*why);
    const int left = builder.FramesLeft(builder.LastSource(), offset, mode->sectorBytes);
    std::optional<std::string> word = NextWord();
    const std::optional<int> length = word ? ParseLength(*word) : std::nullopt;
    if (!length) pushedBack = word;
    if (length && *length > left) return Fail("the file " + source.name + " is shorter than the sheet says");
    builder.Append(length.value_or(left), builder.LastSource(), offset, mode->sectorBytes);
    return true;
  }

  bool AddSilence() {
    if (!NeedsTrack("silence")) return false;
    std::optional<int> length;
    // A mode's name may stand in front of the length of zero data.
    for (int i = 0; i < 3 && !length; ++i) length = ParseLength(NextWord().value_or(""));
    if (!length) return Fail("silence needs a length");
    builder.AppendSilence(*length);
    return true;
  }

  bool AddPregap() {
    if (!NeedsTrack("a pregap")) return false;
    const std::optional<int> length = ParseMsf(NextWord().value_or(""));
    if (!length) return Fail("PREGAP needs a time mm:ss:ff");
    builder.AppendSilence(*length);
    builder.MoveTrackStart(builder.Position());
    return true;
  }

  // The track begins to play so much later than its first stretch; without a time, where the stretches so far
  // end.
  bool SetStart() {
    if (!NeedsTrack("START")) return false;
    std::optional<std::string> word = NextWord();
    const std::optional<int> time = word ? ParseMsf(*word) : std::nullopt;
    if (!time) pushedBack = word;
    builder.MoveTrackStart(time ? trackBegin + *time : builder.Position());
    return true;
  }

  SheetReader reader;
  const SourceOpener& open;
  PlanBuilder builder;
  DiscError error;
  const TrackMode* mode = nullptr;  // of the current track
  int trackBegin = 0;
  std::optional<std::string> pushedBack;
};

}  // namespace

std::variant<DiscPlan, DiscError> PlanTocSheet(std::string_view sheet, const SourceOpener& open) {
  return TocParser(sheet, open).Plan();
}

}  // namespace quorvex
