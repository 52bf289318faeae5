#include "platform/avi/capture_journal.h"

#include <algorithm>

namespace quorvex {
namespace {

constexpr std::uint64_t kMagic = 0x314C4E524A565151;  // "QQVJRNL1"
constexpr std::size_t kSealBytes = 8;

// FNV-1a: tells a note that was torn, not one that somebody made up.
std::uint64_t SealOf(ByteView bytes) {
  std::uint64_t seal = 0xCBF29CE484222325;
  for (const std::uint8_t byte : bytes) seal = (seal ^ byte) * 0x100000001B3;
  return seal;
}

// Reads numbers one after the other; `whole` is false once there were too few.
class Reader {
 public:
  explicit Reader(ByteView read) : bytes(read) {}

  std::uint64_t Next(std::size_t length) {
    if (!Has(length)) return 0;
    const std::uint64_t value = Number(bytes, at, length);
    at += length;
    return value;
  }
  Bytes Raw(std::size_t length) {
    if (!Has(length)) return {};
    const ByteView part = bytes.subspan(at, length);
    at += length;
    return {part.begin(), part.end()};
  }
  [[nodiscard]] bool IsWhole() const { return whole; }

 private:
  bool Has(std::size_t length) {
    whole = whole && length <= bytes.size() - at;
    return whole;
  }

  ByteView bytes;
  std::size_t at = 0;
  bool whole = true;
};

void PutStream(ByteWriter& writer, const AviStream& stream) {
  writer.U16(static_cast<std::uint64_t>(stream.kind)).U32(stream.handler).U32(stream.rate.rate);
  writer.U32(stream.rate.scale).U32(stream.unitBytes).U16(stream.width).U16(stream.height);
  writer.U32(stream.format.size()).Raw(stream.format);
}

AviStream ReadStream(Reader& reader) {
  AviStream stream;
  stream.kind = reader.Next(2) == 0 ? StreamKind::kPictures : StreamKind::kSound;
  stream.handler = static_cast<FourCc>(reader.Next(4));
  stream.rate.rate = static_cast<std::uint32_t>(reader.Next(4));
  stream.rate.scale = static_cast<std::uint32_t>(reader.Next(4));
  stream.unitBytes = static_cast<std::uint32_t>(reader.Next(4));
  stream.width = static_cast<std::uint16_t>(reader.Next(2));
  stream.height = static_cast<std::uint16_t>(reader.Next(2));
  stream.format = reader.Raw(reader.Next(4));
  return stream;
}

bool IsPossible(const AviStream& stream) {
  return stream.rate.rate > 0 && stream.rate.scale > 0 && stream.format.size() <= kMostFormatBytes &&
         (stream.kind == StreamKind::kPictures) == (stream.unitBytes == 0);
}

std::optional<JournalNote> ReadNote(ByteView bytes) {
  if (bytes.size() < kNoteBytes) return std::nullopt;
  const ByteView sealed = bytes.subspan(0, kNoteBytes - kSealBytes);
  if (Number64(bytes, sealed.size()) != SealOf(sealed)) return std::nullopt;
  Reader reader(sealed);
  if (reader.Next(8) != kMagic) return std::nullopt;
  JournalNote note;
  note.serial = reader.Next(8);
  note.end = reader.Next(8);
  note.movie.id = reader.Next(8);
  note.movie.fileBytes = reader.Next(8);
  note.movie.partBytes = reader.Next(8);
  note.movie.oldIndex = reader.Next(2) != 0;
  const std::uint64_t count = reader.Next(2);
  if (count == 0 || count > kMostStreams) return std::nullopt;
  for (std::uint64_t i = 0; i < count; ++i) note.movie.streams.push_back(ReadStream(reader));
  note.safeEnd = reader.Next(8);
  note.systemStart = reader.Next(8);
  const std::vector<AviStream>& streams = note.movie.streams;
  const bool possible = reader.IsWhole() && std::all_of(streams.begin(), streams.end(), IsPossible);
  return possible ? std::optional(std::move(note)) : std::nullopt;
}

}  // namespace

Bytes MakeNote(const JournalNote& note) {
  ByteWriter writer;
  const AviMovie& movie = note.movie;
  writer.U64(kMagic).U64(note.serial).U64(note.end).U64(movie.id).U64(movie.fileBytes).U64(movie.partBytes);
  writer.U16(movie.oldIndex ? 1 : 0).U16(movie.streams.size());
  for (const AviStream& stream : movie.streams) PutStream(writer, stream);
  writer.U64(note.safeEnd).U64(note.systemStart);
  writer.ZerosTo(kNoteBytes - kSealBytes);
  writer.U64(SealOf(writer.View()));
  return writer.Take();
}

std::optional<JournalNote> ReadJournal(ByteView journal) {
  std::optional<JournalNote> newest;
  for (std::size_t at = 0; at < journal.size() && at < kJournalBytes; at += kNoteBytes) {
    std::optional<JournalNote> note = ReadNote(journal.subspan(at));
    if (note && (!newest || note->serial > newest->serial)) newest = std::move(note);
  }
  return newest;
}

}  // namespace quorvex
