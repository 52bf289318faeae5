#include "platform/dvd/pack_demuxer.h"

#include <algorithm>

namespace quorvex {
namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::size_t kPackHeader = 14;
constexpr std::size_t kPesHeader = 9;
constexpr int kPrivateStream1 = 0xBD;

bool IsStartCode(Bytes bytes) { return bytes.size() >= 6 && bytes[0] == 0 && bytes[1] == 0 && bytes[2] == 1; }

std::size_t Word(Bytes bytes, std::size_t at) {
  return static_cast<std::size_t>(bytes[at]) << 8 | bytes[at + 1];
}

// 33 bits in five bytes, with marker bits between them.
std::int64_t TimeStamp(Bytes bytes) {
  return std::int64_t{bytes[0] >> 1 & 7} << 30 | std::int64_t{bytes[1]} << 22 |
         std::int64_t{bytes[2] >> 1} << 15 | std::int64_t{bytes[3]} << 7 | std::int64_t{bytes[4] >> 1};
}

// Takes `count` bytes off the front; false when there are not so many.
bool Skip(Bytes& bytes, std::size_t count) {
  if (count > bytes.size()) return false;
  bytes = bytes.subspan(count);
  return true;
}

// Private stream 1 holds several kinds, told by its first byte. Sound has three more bytes: how many frames
// begin here, and where.
bool IdentifyPrivate(PackPiece& piece) {
  if (piece.bytes.empty()) return false;
  const int id = piece.bytes[0];
  if (id >= 0x20 && id < 0x40) {
    piece.kind = DvdStreamKind::kSubpicture;
    piece.number = id - 0x20;
    return Skip(piece.bytes, 1);
  }
  if (id >= 0x80 && id < 0x88) {
    piece.kind = DvdStreamKind::kAc3;
  } else if (id >= 0x88 && id < 0x90) {
    piece.kind = DvdStreamKind::kDts;
  } else if (id >= 0xA0 && id < 0xA8) {
    piece.kind = DvdStreamKind::kLpcm;
  } else {
    return false;
  }
  piece.number = id & 7;
  return Skip(piece.bytes, 4);
}

bool Identify(PackPiece& piece, int id) {
  if (id == kPrivateStream1) return IdentifyPrivate(piece);
  if (id >= 0xE0 && id < 0xF0) {
    piece.kind = DvdStreamKind::kVideo;
    piece.number = id & 15;
    return true;
  }
  piece.kind = DvdStreamKind::kMpegAudio;
  piece.number = id & 7;
  return id >= 0xC0 && id < 0xE0;
}

// One packet, from its start code on.
std::optional<PackPiece> ReadPacket(Bytes packet) {
  const int id = packet[3];
  const bool hasHeader = packet.size() >= kPesHeader && (packet[6] & 0xC0) == 0x80;
  if (!hasHeader) return std::nullopt;
  PackPiece piece;
  piece.scrambled = (packet[6] & 0x30) != 0;
  const std::size_t header = packet[8];
  if ((packet[7] & 0x80) != 0 && header >= 5 && packet.size() >= kPesHeader + 5)
    piece.pts = TimeStamp(packet.subspan(kPesHeader));
  piece.bytes = packet;
  if (!Skip(piece.bytes, kPesHeader + header) || !Identify(piece, id) || piece.bytes.empty())
    return std::nullopt;
  return piece;
}

}  // namespace

std::vector<PackPiece> SplitPack(Bytes sector) {
  std::vector<PackPiece> pieces;
  if (!IsStartCode(sector) || sector[3] != 0xBA || sector.size() < kPackHeader) return pieces;
  if (!Skip(sector, kPackHeader + (sector[13] & 7U))) return pieces;
  while (IsStartCode(sector)) {
    const std::size_t length = std::min(6 + Word(sector, 4), sector.size());
    if (const auto piece = ReadPacket(sector.first(length))) pieces.push_back(*piece);
    Skip(sector, length);
  }
  return pieces;
}

}  // namespace quorvex
