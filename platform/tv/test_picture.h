// The pictures of the virtual card: colour bars with the channel's number and name and a running clock, snow
// where there is no signal.
//
// Along the top run two rows of twenty blocks, light for 1, the first block the lowest bit. The upper row is
// the picture's number (16 bits), then 0 and 1; the lower the input (8 bits, 255 for no signal) and the
// channel (10 bits), then 1 and 0. The picture controls do not touch them.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "base/geometry.h"
#include "platform/common/picture_view.h"
#include "platform/tv/color_adjustment.h"
#include "platform/tv/scene.h"

namespace quorvex {

class TestPicture {
 public:
  // Draws a picture of any size from 40 x 32 on. `number` counts the pictures, `clock` is in hundredths
  // of a second.
  void Draw(const PictureView& picture, const Scene& scene, const ColorAdjustment& adjustment,
            std::uint32_t number, std::int64_t clock);

 private:
  void PaintGround();
  void DrawSnow(const PictureView& picture);
  static void Blocks(const PictureView& picture, int row, std::uint32_t bits);
  // Fills a part of the picture.
  void Fill(const PictureView& picture, const Rect& part, Rgb color) const;
  // Writes centred text, as large as fits into the width and height, in white on black.
  void Write(const PictureView& picture, std::string_view text, const Rect& into) const;
  [[nodiscard]] PictureView Ground();

  Size size;
  Scene shown;
  ColorAdjustment adjusted;
  std::vector<std::uint8_t> ground;  // what does not move
  std::uint32_t noise = 1;
};

}  // namespace quorvex
