// Writes an AVI file: the header, chunks as they come, indexes, and a new part whenever one is full. What is
// in the file before does no harm: all that counts is written over, and what is left over is marked as such.
#pragma once

#include <vector>

#include "platform/avi/avi_header.h"
#include "platform/avi/byte_file.h"

namespace quorvex {

class AviWriter {
 public:
  AviWriter(ByteTarget& itsTarget, AviMovie itsMovie);

  // The header. Nothing is a movie yet.
  FileResult Begin();

  // A chunk of a stream: one picture, or sound of whole blocks. Without bytes it is a picture that was lost:
  // the one before stays. What was not written whole is not in the movie.
  FileResult Add(std::size_t stream, ByteView data, bool key);

  // The indexes, the header, and an end of what was in the file before. A full disk costs the last chunks,
  // which make room for the indexes.
  FileResult Finish();

  // For a movie that was not finished: what lies in the file, in its order. The next chunk would lie at the
  // place that is told last.
  void NoteChunk(std::size_t stream, std::uint64_t place, std::uint32_t bytes);
  void NoteIndex(std::size_t stream, std::uint64_t place, std::uint32_t bytes);
  // A further part, with the place where the list of chunks before it ends. False when there are too many.
  bool NotePart(std::uint64_t chunksEnd, std::uint64_t place);
  void NoteEnd(std::uint64_t place) { end = place; }

  // The rates may still change until the end.
  AviMovie& Movie() { return movie; }
  [[nodiscard]] const AviTotals& Totals() const { return totals; }
  // Where the next chunk goes.
  [[nodiscard]] std::uint64_t End() const { return end; }

 private:
  FileResult Write(std::uint64_t place, ByteView bytes);
  void Note(const AviChunk& chunk);
  void DropLast();
  [[nodiscard]] bool IsFirstPart() const { return partBegin == 0; }
  [[nodiscard]] std::uint64_t IndexBytes(std::size_t more) const;
  [[nodiscard]] bool NeedsNewPart(std::uint64_t bytes) const;
  FileResult EndPart();
  FileResult EndLastPart();
  FileResult NextPart();
  FileResult EndRest();
  [[nodiscard]] std::int64_t UnitsOf(const AviChunk& chunk) const;

  ByteTarget& target;
  AviMovie movie;
  AviTotals totals;
  const std::uint64_t headerBytes;
  std::uint64_t end = 0;
  std::uint64_t reached = 0;  // how far the file is known to have room
  std::uint64_t partBegin = 0;
  std::vector<AviChunk> chunks;                        // of this part
  std::array<PartIndex, kMostStreams> notedIndexes{};  // likewise
};

}  // namespace quorvex
