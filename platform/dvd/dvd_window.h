// The window that shows a disc's pictures, for points that applications name in its pixels.
#pragma once

#include <windows.h>

#include <optional>

#include "platform/common/filter_base.h"
#include "platform/dvd/canvas.h"

namespace quorvex {

class DvdWindow {
 public:
  DvdWindow(FilterBase& owner, const Canvas& shown) : filter(owner), canvas(shown) {}

  // The pixel of the disc's video under a point of the renderer's client area; none without a window.
  [[nodiscard]] std::optional<Point> VideoPoint(POINT point, VideoShape shape);

 private:
  FilterBase& filter;
  const Canvas& canvas;
};

}  // namespace quorvex
