// The beginning of an AVI file, up to its first chunk. Its length goes by the streams' formats alone, so that
// it can be written anew when the numbers are known.
#pragma once

#include <array>

#include "platform/avi/avi_index.h"

namespace quorvex {

struct StreamTotals {
  std::int64_t units = 0;
  std::uint64_t bytes = 0;
  std::uint32_t largest = 0;  // chunk
  std::vector<PartIndex> parts;
};

struct AviTotals {
  std::array<StreamTotals, kMostStreams> streams;
  std::uint64_t firstPart = 0;     // bytes of the first part of the file, without its own header
  std::uint64_t firstChunks = 0;   // of its list of chunks, likewise
  std::int64_t firstPictures = 0;  // in it
};

// The place of the first chunk.
std::uint64_t HeaderBytes(const AviMovie& movie);

Bytes MakeHeader(const AviMovie& movie, const AviTotals& totals);

// Whether a file that begins so is this recording.
bool IsHeaderOf(const AviMovie& movie, ByteView beginning);

// How long a movie plays: its longest stream.
MediaTime LengthOf(const AviMovie& movie, const AviTotals& totals);

// The header of each further part, 24 bytes; its first chunk follows.
constexpr std::size_t kPartHeader = 24;
Bytes MakePartHeader(std::uint64_t partBytes, std::uint64_t chunkBytes);

}  // namespace quorvex
