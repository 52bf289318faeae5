// The renderer that shows a disc's pictures: for points that applications name in its pixels, and because it
// forgets a picture that stands when its window gets another size.
#pragma once

#include <windows.h>

#include <optional>

#include "platform/common/output_pin.h"
#include "platform/dvd/canvas.h"

namespace quorvex {

class DvdWindow {
 public:
  DvdWindow(OutputPin& picturePin, const Canvas& shown) : pin(picturePin), canvas(shown) {}

  // The pixel of the disc's video under a point of the renderer's client area; none without a window.
  [[nodiscard]] std::optional<Point> VideoPoint(POINT point, VideoShape shape);

  // What the picture fills, in pixels; empty without a window.
  [[nodiscard]] Size ShownSize() { return Shown().Extent(); }

 private:
  [[nodiscard]] Rect Shown();

  OutputPin& pin;
  const Canvas& canvas;
};

}  // namespace quorvex
