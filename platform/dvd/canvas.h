// Where on the picture that is shown a disc's video lies. Shown are square pixels, always of one size; video
// of the other shape is set into it with black beside it.
#pragma once

#include <algorithm>

#include "base/geometry.h"

namespace quorvex {

// The size of a disc's full picture: 720 wide, as high as its television system has lines.
constexpr Size VideoSize(bool pal) { return {720, pal ? 576 : 480}; }

// How video is shaped.
struct VideoShape {
  bool wide = false;  // 16:9, else 4:3
  bool pal = false;
};

class Canvas {
 public:
  // `wide`: 16:9, else 4:3.
  constexpr Canvas(bool wide, bool pal)
      : size(pal ? Size{wide ? 1024 : 768, 576} : Size{wide ? 854 : 720, wide ? 480 : 540}) {}

  [[nodiscard]] constexpr Size Extent() const { return size; }

  // The part that video of a shape takes.
  [[nodiscard]] constexpr Rect VideoArea(bool wide) const {
    const int shapeWidth = wide ? 16 : 4;
    const int shapeHeight = wide ? 9 : 3;
    int width = size.width;
    int height = size.height;
    // A pixel or two of rounding are no border.
    if (size.width * shapeHeight > (size.height * shapeWidth) + 4 * shapeHeight) {
      width = size.height * shapeWidth / shapeHeight & ~1;
    } else if ((size.width + 4) * shapeHeight < size.height * shapeWidth) {
      height = size.width * shapeHeight / shapeWidth & ~1;
    }
    const int left = (size.width - width) / 2;
    const int top = (size.height - height) / 2;
    return {left, top, left + width, top + height};
  }

  // The pixel of the video under a point of a window that shows the canvas, of that size.
  [[nodiscard]] constexpr Point ToVideo(Point point, Size window, bool wide, Size video) const {
    if (window.width <= 0 || window.height <= 0) return {-1, -1};
    const Rect area = VideoArea(wide);
    const int x = point.x * size.width / window.width - area.left;
    const int y = point.y * size.height / window.height - area.top;
    return {x * video.width / area.Width(), y * video.height / area.Height()};
  }

 private:
  Size size;
};

}  // namespace quorvex
