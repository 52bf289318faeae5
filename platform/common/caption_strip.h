// A row of captions as a strip to lay over a picture: where its cells lie, and its drawn characters in their
// colours with what sets them off from the picture.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "base/geometry.h"
#include "platform/common/caption_screen.h"
#include "platform/common/picture_view.h"

namespace quorvex {

// The box of a cell in a picture. Columns -1 and 32 are the margins beside a row.
Rect CaptionCellBox(Size picture, int row, int column);

// What a row may draw into: its cells, its margins and the outline around them.
Rect CaptionStripBox(Size picture, int row);

class CaptionStrip {
 public:
  CaptionStrip() = default;  // nothing to be seen
  // `coverage`: how much of every pixel of the strip's box characters cover (0 to 255), line by line. With a
  // background, black lies behind the characters and a column to both sides; without, they have a black
  // outline.
  CaptionStrip(Size picture, int rowNumber, const CaptionRow& cells, std::span<const std::uint8_t> coverage,
               bool withBackground);

  // The picture must be of the size that the strip was made for.
  void Blend(const PictureView& picture) const;

 private:
  struct Pixel {
    std::uint8_t blue = 0, green = 0, red = 0;  // times opacity
    std::uint8_t opacity = 0;
  };

  void Back(const CaptionRow& cells);
  void Outline(std::span<const std::uint8_t> coverage, int radius);
  void Color(const CaptionRow& cells, std::span<const std::uint8_t> coverage);
  // Calls act(index) for every pixel of some columns.
  template <typename Act>
  void ForEachPixel(int firstColumn, int lastColumn, bool wholeHeight, Act act);

  Size size;
  int row = 0;
  Rect box;
  std::vector<Pixel> pixels;
};

}  // namespace quorvex
