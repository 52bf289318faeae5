// The panel's bitmaps and its font, from their loading when the panel is made to their release when it goes.
#pragma once

#include <windows.h>

#include "base/handles.h"

namespace quorvex {

struct Skin {
  UniqueBitmap background;  // 534 x 115, the whole panel with every key
  UniqueBitmap segments;    // 325 x 70, one bit per pixel: every glyph of the display, black
  UniqueFont displayFont;   // of the display's text line
};
extern Skin skin;

inline constexpr int kPanelWidth = 534;
inline constexpr int kPanelHeight = 115;

// Loads the two bitmaps; false when one is missing.
bool LoadSkinBitmaps();

void CreateDisplayFont();

// A memory device context with a bitmap selected, for copying from it.
class BitmapDc {
 public:
  BitmapDc(HDC like, HBITMAP bitmap) : dc(::CreateCompatibleDC(like)), selected(dc.Get(), bitmap) {}
  [[nodiscard]] HDC Get() const { return dc.Get(); }

 private:
  UniqueDc dc;
  Selected selected;
};

// Loads a bitmap resource, copies it to (x, y) in its natural size, frees it.
void DrawBitmapResource(HDC dc, int bitmapId, int x, int y);

// The same, stretched to a width and height.
void StretchBitmapResource(HDC dc, int bitmapId, int x, int y, int width, int height);

}  // namespace quorvex
