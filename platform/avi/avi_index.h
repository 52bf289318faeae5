// The indexes of an AVI file: one for each stream at the end of each part of the file, the list of these in
// the header, and the old one of the first part.
#pragma once

#include <span>
#include <vector>

#include "platform/avi/avi_movie.h"

namespace quorvex {

// A chunk of a stream.
struct AviChunk {
  std::uint64_t place = 0;  // of its header
  std::uint32_t bytes = 0;  // of what it holds
  std::uint8_t stream = 0;
  bool key = true;
};

// A stream's index in one part of the file.
struct PartIndex {
  std::uint64_t place = 0;
  std::uint32_t bytes = 0;  // with its header
  std::uint32_t units = 0;  // that it covers
};

// A stream's list of part indexes has room for these.
constexpr std::size_t kMostParts = 256;
constexpr std::size_t kPartListBytes = 24 + kMostParts * 16;

std::uint64_t PartIndexBytes(std::size_t chunks);
std::uint64_t OldIndexBytes(std::size_t chunks);

// The index of a stream's chunks among those of a part that begins at `base`.
Bytes MakePartIndex(const AviMovie& movie, std::size_t stream, std::span<const AviChunk> chunks,
                    std::uint64_t base);

// Places count from `movi`, that of the letters that begin the list of chunks.
Bytes MakeOldIndex(const AviMovie& movie, std::span<const AviChunk> chunks, std::uint64_t movi);

// What the chunk "indx" of the header holds.
Bytes MakePartList(const AviMovie& movie, std::size_t stream, std::span<const PartIndex> parts);

}  // namespace quorvex
