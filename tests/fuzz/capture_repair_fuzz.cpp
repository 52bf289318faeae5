// Recordings that were cut off. The first byte tells the movie's streams, two more (the low one first) how
// far its journal says the chunks go; then come the chunks themselves. What is left over of an older, longer
// recording may follow them.
#include "platform/avi/capture_repair.h"

#include "platform/avi/avi_extent.h"
#include "tests/fuzz/fuzz_target.h"
#include "tests/unit/avi_support.h"

namespace quorvex {
namespace {

constexpr std::size_t kOwnBytes = 3;

enum StreamBit : std::uint8_t { kWithSound = 1, kCoded = 2, kWithOldIndex = 4, kSoundFirst = 8 };

AviMovie MovieOf(std::uint8_t streams) {
  AviMovie movie{.streams = {TestPictures()}, .id = 77, .oldIndex = (streams & kWithOldIndex) != 0};
  if ((streams & kCoded) != 0) movie.streams[0].handler = Letters("MJPG");
  if ((streams & kWithSound) != 0) movie.streams.push_back(TestSound());
  if ((streams & kSoundFirst) != 0) std::reverse(movie.streams.begin(), movie.streams.end());
  return movie;
}

// What a stream's chunks hold is what was recorded.
void CheckChunks(const FoundAvi& found, FourCc name, const Bytes& before, const Bytes& after) {
  const std::string text{static_cast<char>(name), static_cast<char>(name >> 8), static_cast<char>(name >> 16),
                         static_cast<char>(name >> 24)};
  if (!found.chunks.contains(text)) return;
  for (const FoundChunk& chunk : found.chunks.at(text)) {
    const auto from = static_cast<std::ptrdiff_t>(chunk.at);
    Require(chunk.at + chunk.length <= before.size(), "every chunk was there");
    Require(std::equal(before.begin() + from, before.begin() + from + chunk.length, after.begin() + from),
            "what was recorded stays as it is");
  }
}

void Repaired(MemoryFile& file, const JournalNote& note) {
  const Bytes before = file.bytes;
  const Repair repair = RepairMovie(file, file, note);
  Require(repair.result == Repair::Result::kRepaired && repair.length >= 0, "the movie is repaired");
  Require(file.bytes.size() >= before.size(), "a file is not made shorter");
  const FoundAvi found = FindAll(file.bytes);
  Require(found.whole, "a repaired movie is whole");
  const std::optional<std::uint64_t> extent = MovieBytes(file);
  Require(extent && *extent <= file.bytes.size(), "the movie lies within its file");
  for (std::size_t i = 0; i < note.movie.streams.size(); ++i)
    CheckChunks(found, ChunkName(note.movie, i), before, file.bytes);
}

void Try(ByteView bytes) {
  if (bytes.size() < kOwnBytes) return;
  JournalNote note{.movie = MovieOf(bytes[0])};
  MemoryFile file(MakeHeader(note.movie, {}));
  note.end = file.bytes.size() + Number(bytes, 1, 2);
  const ByteView chunks = bytes.subspan(kOwnBytes);
  file.bytes.insert(file.bytes.end(), chunks.begin(), chunks.end());
  note.movie.fileBytes = file.bytes.size();
  Repaired(file, note);
  Repaired(file, note);  // as when nobody came to delete the journal

  MemoryFile any(Bytes(bytes.begin(), bytes.end()));
  Require(MovieBytes(any).value_or(0) <= any.bytes.size(), "a movie lies within its file");
}

}  // namespace
}  // namespace quorvex

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  quorvex::Try({bytes, size});
  return 0;
}
