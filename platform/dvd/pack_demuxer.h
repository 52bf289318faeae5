// What is in one sector of a DVD's video file: an MPEG-2 pack with parts of streams.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace quorvex {

constexpr std::size_t kDvdSectorBytes = 2048;

enum class DvdStreamKind { kVideo, kMpegAudio, kAc3, kDts, kLpcm, kSubpicture };

// A piece of one stream, within the sector. Sound is without the disc's own header, but linear PCM keeps the
// three bytes that say how it is coded.
struct PackPiece {
  DvdStreamKind kind = DvdStreamKind::kVideo;
  int number = 0;                   // of the stream among its kind (sound: among all sound)
  std::optional<std::int64_t> pts;  // when what begins in the piece is presented, in 90 kHz ticks
  bool scrambled = false;
  std::span<const std::uint8_t> bytes;
};

// The pieces of a sector; damaged ones are left out. Never reads outside it.
std::vector<PackPiece> SplitPack(std::span<const std::uint8_t> sector);

}  // namespace quorvex
