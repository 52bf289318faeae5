#include "platform/avi/avi_writer.h"

#include <algorithm>
#include <utility>

namespace quorvex {
namespace {

// What fills the rest of a file is no longer than this: players take lengths for 32 bits with a sign.
constexpr std::uint64_t kLongestRest = 1ULL << 30;

}  // namespace

AviWriter::AviWriter(ByteTarget& itsTarget, AviMovie itsMovie)
    : target(itsTarget), movie(std::move(itsMovie)), headerBytes(HeaderBytes(movie)), end(headerBytes) {}

FileResult AviWriter::Write(std::uint64_t place, ByteView bytes) {
  std::size_t written = 0;
  const FileResult result = target.Write(place, bytes, written);
  reached = std::max(reached, place + written);
  return result;
}

FileResult AviWriter::Begin() { return Write(0, MakeHeader(movie, totals)); }

std::int64_t AviWriter::UnitsOf(const AviChunk& chunk) const {
  const std::uint32_t unit = movie.streams[chunk.stream].unitBytes;
  return unit == 0 ? 1 : chunk.bytes / unit;
}

void AviWriter::Note(const AviChunk& chunk) {
  StreamTotals& stream = totals.streams[chunk.stream];
  const std::int64_t units = UnitsOf(chunk);
  stream.units += units;
  stream.bytes += chunk.bytes;
  stream.largest = std::max(stream.largest, chunk.bytes);
  if (IsFirstPart() && movie.streams[chunk.stream].kind == StreamKind::kPictures)
    totals.firstPictures += units;
  chunks.push_back(chunk);
}

void AviWriter::DropLast() {
  const AviChunk& chunk = chunks.back();
  const std::int64_t units = UnitsOf(chunk);
  totals.streams[chunk.stream].units -= units;
  totals.streams[chunk.stream].bytes -= chunk.bytes;
  if (IsFirstPart() && movie.streams[chunk.stream].kind == StreamKind::kPictures)
    totals.firstPictures -= units;
  end = chunk.place;
  chunks.pop_back();
}

// The length of the indexes at the end of this part, with `more` chunks in it.
std::uint64_t AviWriter::IndexBytes(std::size_t more) const {
  const std::size_t count = chunks.size() + more;
  const std::uint64_t old = IsFirstPart() && movie.oldIndex ? OldIndexBytes(count) : 0;
  return old + movie.streams.size() * PartIndexBytes(0) + (PartIndexBytes(count) - PartIndexBytes(0));
}

bool AviWriter::NeedsNewPart(std::uint64_t bytes) const {
  return !chunks.empty() && end - partBegin + kChunkHeader + bytes + IndexBytes(1) > movie.partBytes;
}

FileResult AviWriter::Add(std::size_t stream, ByteView data, bool key) {
  if (NeedsNewPart(Even(data.size()))) {
    if (const FileResult result = NextPart(); result != FileResult::kDone) return result;
  }
  const AviChunk chunk{end, static_cast<std::uint32_t>(data.size()), static_cast<std::uint8_t>(stream),
                       key && !data.empty()};
  ByteWriter header;
  header.U32(ChunkName(movie, stream)).U32(data.size());
  FileResult result = Write(end, header.View());
  if (result == FileResult::kDone && !data.empty()) result = Write(end + kChunkHeader, data);
  if (result == FileResult::kDone && data.size() % 2 != 0) {
    constexpr std::array<std::uint8_t, 1> kPad{};
    result = Write(end + kChunkHeader + data.size(), kPad);
  }
  if (result != FileResult::kDone) return result;
  Note(chunk);
  end += kChunkHeader + Even(data.size());
  return FileResult::kDone;
}

// Writes the part's indexes and its lengths. The first part's lengths are in the header.
FileResult AviWriter::EndPart() {
  ByteWriter indexes;
  std::array<PartIndex, kMostStreams> made;
  for (std::size_t i = 0; i < movie.streams.size(); ++i) {
    const Bytes index = MakePartIndex(movie, i, chunks, partBegin);
    std::int64_t units = 0;
    for (const AviChunk& chunk : chunks) units += chunk.stream == i ? UnitsOf(chunk) : 0;
    made.at(i) = {end + indexes.Size(), static_cast<std::uint32_t>(index.size()),
                  static_cast<std::uint32_t>(units)};
    indexes.Raw(index);
  }
  const std::uint64_t chunksEnd = end + indexes.Size();
  if (IsFirstPart() && movie.oldIndex) indexes.Raw(MakeOldIndex(movie, chunks, headerBytes - 4));
  FileResult result = Write(end, indexes.View());
  if (result == FileResult::kDone && !IsFirstPart()) {
    result = Write(partBegin, MakePartHeader(end + indexes.Size() - partBegin - kChunkHeader,
                                             chunksEnd - partBegin - kPartHeader + 4));
  }
  if (result != FileResult::kDone) return result;
  for (std::size_t i = 0; i < movie.streams.size(); ++i) totals.streams.at(i).parts.push_back(made.at(i));
  end += indexes.Size();
  if (IsFirstPart()) {
    totals.firstPart = end - kChunkHeader;
    totals.firstChunks = chunksEnd - (headerBytes - 4);
  }
  chunks.clear();
  return FileResult::kDone;
}

FileResult AviWriter::NextPart() {
  if (totals.streams[0].parts.size() + 1 >= kMostParts) return FileResult::kFull;
  if (const FileResult result = EndPart(); result != FileResult::kDone) return result;
  // Before its header is written: where that fails, it is this part that is left away, not the one before.
  partBegin = end;
  end += kPartHeader;
  return Write(partBegin, MakePartHeader(0, 0));
}

// A part without chunks was not needed.
FileResult AviWriter::EndLastPart() {
  if (!chunks.empty() || IsFirstPart()) return EndPart();
  end = partBegin;
  return FileResult::kDone;
}

FileResult AviWriter::Finish() {
  FileResult result = EndLastPart();
  if (result == FileResult::kFull) {
    while (!chunks.empty() && end + IndexBytes(0) > reached) DropLast();
    result = EndLastPart();
  }
  if (result == FileResult::kDone) result = Write(0, MakeHeader(movie, totals));
  return result == FileResult::kDone ? EndRest() : result;
}

FileResult AviWriter::EndRest() {
  if (end >= movie.fileBytes) return target.Resize(end);
  for (std::uint64_t place = end; place < movie.fileBytes;) {
    const std::uint64_t left = movie.fileBytes - place;
    ByteWriter rest;
    std::uint64_t bytes = 0;
    if (left < kChunkHeader) {
      rest.Zeros(left);
    } else {
      bytes = std::min(left - kChunkHeader, kLongestRest);
      if (const std::uint64_t after = left - kChunkHeader - bytes; after > 0 && after < kChunkHeader)
        bytes -= kChunkHeader;
      rest.U32(Letters("JUNK")).U32(bytes);
    }
    if (const FileResult result = Write(place, rest.View()); result != FileResult::kDone) return result;
    place += rest.Size() + bytes;
  }
  return target.Resize(movie.fileBytes);
}

void AviWriter::NoteChunk(std::size_t stream, std::uint64_t place, std::uint32_t bytes) {
  Note({place, bytes, static_cast<std::uint8_t>(stream), bytes > 0});
}

void AviWriter::NoteIndex(std::size_t stream, std::uint64_t place, std::uint32_t bytes) {
  std::int64_t units = totals.streams[stream].units;
  for (const PartIndex& part : totals.streams[stream].parts) units -= part.units;
  notedIndexes.at(stream) = {place, bytes + static_cast<std::uint32_t>(kChunkHeader),
                             static_cast<std::uint32_t>(units)};
}

bool AviWriter::NotePart(std::uint64_t chunksEnd, std::uint64_t place) {
  if (totals.streams[0].parts.size() + 1 >= kMostParts) return false;
  if (IsFirstPart()) {
    totals.firstPart = place - kChunkHeader;
    totals.firstChunks = chunksEnd - (headerBytes - 4);
  }
  for (std::size_t i = 0; i < movie.streams.size(); ++i)
    totals.streams.at(i).parts.push_back(std::exchange(notedIndexes.at(i), {}));
  partBegin = place;
  chunks.clear();
  return true;
}

}  // namespace quorvex
