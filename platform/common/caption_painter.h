// Draws a screen of captions into a picture, with the platform's fonts.
#pragma once

#include <array>
#include <vector>

#include "base/handles.h"
#include "platform/common/caption_screen.h"
#include "platform/common/caption_strip.h"
#include "platform/common/picture_view.h"

namespace quorvex {

class CaptionPainter {
 public:
  // Draws the screen's cells into the safe area of the picture, on black (opaque) or over the picture. Rows
  // are kept as they were drawn, so that one that does not change costs a copy only. Safe from any one
  // thread at a time.
  void Paint(const PictureView& picture, const CaptionScreen& screen, bool opaqueBackground);

 private:
  struct KeptRow {
    CaptionRow cells{};
    CaptionStrip strip;
  };

  // Begins anew for pictures of a size and a kind of background.
  void Begin(Size picture, bool withBackground);
  void Draw(int row, const CaptionRow& cells);
  [[nodiscard]] std::vector<std::uint8_t> Coverage(int row, const CaptionRow& cells);

  Size size;
  bool opaque = false;
  std::array<KeptRow, CaptionScreen::kRows> rows;
  UniqueFont upright;
  UniqueFont italic;
};

}  // namespace quorvex
