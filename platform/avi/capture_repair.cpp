#include "platform/avi/capture_repair.h"

#include <algorithm>
#include <array>

#include "platform/avi/avi_writer.h"

namespace quorvex {
namespace {

// Goes from chunk to chunk, and tells a writer what there is.
class Walk {
 public:
  Walk(ByteSource& itsSource, const AviMovie& itsMovie, std::uint64_t itsEnd, AviWriter& told)
      : source(itsSource), movie(itsMovie), end(itsEnd), writer(told) {}

  void Go() {
    place = chunksEnd = writer.End();
    while (Step()) {
    }
    writer.NoteEnd(place);
  }

 private:
  bool Step() {
    std::array<std::uint8_t, kPartHeader> header{};
    const std::size_t read = source.Read(place, header);
    if (place >= end || read < kChunkHeader) return false;
    const FourCc name = Number32(header, 0);
    const std::uint32_t bytes = Number32(header, 4);
    if (name == Letters("RIFF")) return read == kPartHeader && NextPart(header);
    const std::uint64_t next = place + kChunkHeader + Even(bytes);
    if (next > end || !NoteOne(name, bytes)) return false;
    place = next;
    if (name != Letters("idx1")) chunksEnd = next;
    return true;
  }

  bool NextPart(ByteView header) {
    const bool isOne = Number32(header, 8) == Letters("AVIX") && Number32(header, 20) == Letters("movi");
    if (!isOne || place + kPartHeader > end || !writer.NotePart(chunksEnd, place)) return false;
    place = chunksEnd = place + kPartHeader;
    return true;
  }

  bool NoteOne(FourCc name, std::uint32_t bytes) {
    if (name == Letters("idx1")) return true;
    for (std::size_t i = 0; i < movie.streams.size(); ++i) {
      if (name == ChunkName(movie, i)) {
        writer.NoteChunk(i, place, bytes);
        return true;
      }
      if (name == IndexName(i)) {
        writer.NoteIndex(i, place, bytes);
        return true;
      }
    }
    return false;
  }

  ByteSource& source;
  const AviMovie& movie;
  const std::uint64_t end;
  AviWriter& writer;
  std::uint64_t place = 0;
  std::uint64_t chunksEnd = 0;
};

bool Holds(ByteSource& source, const AviMovie& movie) {
  Bytes beginning(HeaderBytes(movie));
  return source.Read(0, beginning) == beginning.size() && IsHeaderOf(movie, beginning);
}

}  // namespace

Repair RepairMovie(ByteSource& source, ByteTarget& target, const JournalNote& note) {
  if (!Holds(source, note.movie)) return {};
  AviMovie movie = note.movie;
  movie.fileBytes = std::min(movie.fileBytes, source.Size());
  AviWriter writer(target, movie);
  Walk(source, note.movie, std::min(note.end, source.Size()), writer).Go();
  if (writer.Finish() != FileResult::kDone) return {Repair::Result::kFailed, 0};
  return {Repair::Result::kRepaired, LengthOf(movie, writer.Totals())};
}

}  // namespace quorvex
