#include "platform/avi/avi_extent.h"

#include <array>

namespace quorvex {

std::optional<std::uint64_t> MovieBytes(ByteSource& file) {
  const std::uint64_t size = file.Size();
  std::uint64_t end = 0;
  for (;;) {
    std::array<std::uint8_t, 12> header{};
    if (file.Read(end, header) < header.size() || Number32(header, 0) != Letters("RIFF")) break;
    if (Number32(header, 8) != (end == 0 ? Letters("AVI ") : Letters("AVIX"))) break;
    const std::uint32_t bytes = Number32(header, 4);
    const std::uint64_t next = end + kChunkHeader + Even(bytes);
    if (bytes < header.size() || next > size) break;
    end = next;
  }
  return end > 0 ? std::optional(end) : std::nullopt;
}

}  // namespace quorvex
