// Draws a screen of captions into a picture, with the platform's fonts.
#pragma once

#include "platform/common/line21_decoder.h"
#include "platform/common/picture_view.h"

namespace quorvex {

class CaptionPainter {
 public:
  // Draws the screen's cells into the safe area of the picture, on black (opaque) or over the picture. The
  // drawn characters are kept, so that a screen that does not change costs a copy only. Safe from any one
  // thread at a time.
  void Paint(const PictureView& picture, const CaptionScreen& screen, bool opaqueBackground);
};

}  // namespace quorvex
