// Reads the marks off a picture of a test disc (tests/support/discs/pictures.py tells what they are).
#pragma once

#include <optional>

#include "platform/common/picture_view.h"

namespace quorvex {

struct DiscMarks {
  int picture = 0;  // from 0 in its film
  int chapter = 0;  // from 1; a menu: 0
  int film = 0;
  friend bool operator==(const DiscMarks&, const DiscMarks&) = default;
};

// The number in one of the two rows of blocks, whatever size the picture is shown in.
inline int BlockRow(const PictureView& picture, int row) {
  constexpr int kBlocks = 20;
  constexpr int kRows = 16;
  constexpr int kBright = 125;
  int number = 0;
  const int y = (2 * row + 1) * picture.height / (2 * kRows);
  for (int block = 0; block < kBlocks; ++block) {
    const int x = (2 * block + 1) * picture.width / (2 * kBlocks);
    const std::uint8_t green = picture.top[y * picture.stride + x * 4 + 1];
    number |= static_cast<int>(green > kBright) << block;
  }
  return number;
}

// None when it is no picture of a disc.
inline std::optional<DiscMarks> ReadDiscMarks(const PictureView& picture) {
  const int upper = BlockRow(picture, 0);
  const int lower = BlockRow(picture, 1);
  if (upper >> 18 != 2 || lower >> 18 != 1) return std::nullopt;
  return DiscMarks{.picture = upper & 0xFFFF, .chapter = lower & 0xFF, .film = lower >> 8 & 0x3FF};
}

}  // namespace quorvex
