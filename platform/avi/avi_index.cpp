#include "platform/avi/avi_index.h"

#include <algorithm>

namespace quorvex {
namespace {

constexpr std::uint32_t kNotKey = 1U << 31;
constexpr std::uint32_t kOldKey = 0x10;

FourCc WithNumber(std::size_t stream, char first, char second, bool numberFirst) {
  const auto ten = static_cast<FourCc>('0' + stream / 10);
  const auto one = static_cast<FourCc>('0' + stream % 10);
  const FourCc number = one << 8 | ten;
  const FourCc letters = static_cast<FourCc>(second) << 8 | static_cast<FourCc>(first);
  return numberFirst ? letters << 16 | number : number << 16 | letters;
}

}  // namespace

FourCc ChunkName(const AviMovie& movie, std::size_t stream) {
  const AviStream& told = movie.streams[stream];
  if (told.kind == StreamKind::kSound) return WithNumber(stream, 'w', 'b', true);
  return WithNumber(stream, 'd', told.handler == 0 ? 'b' : 'c', true);
}

FourCc IndexName(std::size_t stream) { return WithNumber(stream, 'i', 'x', false); }

std::uint64_t PartIndexBytes(std::size_t chunks) { return kChunkHeader + 24 + 8 * chunks; }
std::uint64_t OldIndexBytes(std::size_t chunks) { return kChunkHeader + 16 * chunks; }

Bytes MakePartIndex(const AviMovie& movie, std::size_t stream, std::span<const AviChunk> chunks,
                    std::uint64_t base) {
  const auto isOurs = [stream](const AviChunk& chunk) { return chunk.stream == stream; };
  ByteWriter writer;
  const std::size_t begun = writer.Begin(IndexName(stream));
  writer.U16(2).U16(1U << 8);  // two numbers an entry; the kind: an index of chunks
  writer.U32(static_cast<std::uint64_t>(std::count_if(chunks.begin(), chunks.end(), isOurs)));
  writer.U32(ChunkName(movie, stream)).U64(base).U32(0);
  for (const AviChunk& chunk : chunks) {
    if (isOurs(chunk))
      writer.U32(chunk.place + kChunkHeader - base).U32(chunk.bytes | (chunk.key ? 0 : kNotKey));
  }
  writer.End(begun);
  return writer.Take();
}

Bytes MakeOldIndex(const AviMovie& movie, std::span<const AviChunk> chunks, std::uint64_t movi) {
  ByteWriter writer;
  const std::size_t begun = writer.Begin(Letters("idx1"));
  for (const AviChunk& chunk : chunks) {
    writer.U32(ChunkName(movie, chunk.stream)).U32(chunk.key ? kOldKey : 0);
    writer.U32(chunk.place - movi).U32(chunk.bytes);
  }
  writer.End(begun);
  return writer.Take();
}

Bytes MakePartList(const AviMovie& movie, std::size_t stream, std::span<const PartIndex> parts) {
  ByteWriter writer;
  writer.U16(4).U16(0).U32(parts.size()).U32(ChunkName(movie, stream)).Zeros(12);
  for (const PartIndex& part : parts) writer.U64(part.place).U32(part.bytes).U32(part.units);
  writer.ZerosTo(kPartListBytes);
  return writer.Take();
}

}  // namespace quorvex
