#include "platform/common/caption_strip.h"

#include <gtest/gtest.h>

#include <random>

namespace quorvex {
namespace {

TEST(CaptionStrip, FitsIntoPicturesOfAnySize) {
  std::mt19937 random(7);
  for (int round = 0; round < 300; ++round) {
    const Size size{1 + static_cast<int>(random() % 60), 1 + static_cast<int>(random() % 60)};
    CaptionRow cells;
    for (CaptionCell& cell : cells) cell.character = random() % 2 == 0 ? U'x' : U'\0';
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(size.width * size.height * 4), 90);
    const PictureView view{
        .top = bytes.data(), .stride = size.width * 4, .width = size.width, .height = size.height};
    for (int row = 0; row < CaptionScreen::kRows; ++row) {
      const Size box = CaptionStripBox(size, row).Extent();
      std::vector<std::uint8_t> coverage(static_cast<std::size_t>(box.width * box.height));
      for (std::uint8_t& part : coverage) part = static_cast<std::uint8_t>(random());
      CaptionStrip(size, row, cells, coverage, round % 2 == 0).Blend(view);
    }
  }
}

TEST(CaptionStrip, RowsAndColumnsMeetWithoutGaps) {
  for (const Size size : {Size{720, 480}, {720, 576}, {352, 240}, {101, 77}}) {
    for (int row = 0; row < CaptionScreen::kRows; ++row) {
      for (int column = -1; column < CaptionScreen::kColumns; ++column) {
        const Rect box = CaptionCellBox(size, row, column);
        EXPECT_EQ(box.right, CaptionCellBox(size, row, column + 1).left);
        EXPECT_EQ(box.bottom, CaptionCellBox(size, row + 1, column).top);
      }
    }
  }
}

}  // namespace
}  // namespace quorvex
