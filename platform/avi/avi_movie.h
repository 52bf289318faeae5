// What an AVI file says of its streams, and how much of them it holds.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/avi/byte_order.h"
#include "platform/common/media_time.h"

namespace quorvex {

// Units a second, as the file tells it: rate / scale. A unit is a picture, or a sound's block (one sample of
// each channel, where it is not compressed).
struct UnitRate {
  std::uint32_t rate = 25;
  std::uint32_t scale = 1;

  [[nodiscard]] constexpr MediaTime TimeOf(std::int64_t units) const {
    return Rescale(units, kSecond * scale, rate);
  }
  [[nodiscard]] constexpr std::int64_t UnitsIn(MediaTime time) const {
    return Rescale(time, rate, kSecond * scale);
  }
  friend bool operator==(const UnitRate&, const UnitRate&) = default;
};

enum class StreamKind : std::uint8_t { kPictures, kSound };

struct AviStream {
  StreamKind kind = StreamKind::kPictures;
  FourCc handler = 0;  // the coding; 0 for plain pictures and for sound
  UnitRate rate;
  std::uint32_t unitBytes = 0;  // of a sound's block; 0 for pictures, whose chunks are units
  std::uint16_t width = 0;
  std::uint16_t height = 0;
  Bytes format;  // BITMAPINFOHEADER or WAVEFORMATEX, and what belongs to it
  friend bool operator==(const AviStream&, const AviStream&) = default;
};

// A file holds no more of these.
constexpr std::size_t kMostStreams = 4;
constexpr std::size_t kMostFormatBytes = 1400;

struct AviMovie {
  std::vector<AviStream> streams;
  std::uint64_t id = 0;                  // tells this recording from every other
  std::uint64_t fileBytes = 0;           // of the file before: it is not made shorter
  std::uint64_t partBytes = 1ULL << 30;  // the first part and each that follows is no longer
  bool oldIndex = true;                  // the first part has an index that old players read
  friend bool operator==(const AviMovie&, const AviMovie&) = default;
};

// The name of a stream's chunks, "00dc" or "01wb".
FourCc ChunkName(const AviMovie& movie, std::size_t stream);
// That of its index chunks, "ix00".
FourCc IndexName(std::size_t stream);

}  // namespace quorvex
