// The panel's bitmaps and its font, from their loading when the panel is made to their release when it goes.
#pragma once

#include <windows.h>

#include "base/handles.h"

namespace quorvex {

// A bitmap ready to be copied from and drawn to: selected into a memory device context of its own.
class BitmapDc {
 public:
  BitmapDc() = default;
  explicit BitmapDc(UniqueBitmap held);

  [[nodiscard]] HDC Get() const { return dc.Get(); }
  [[nodiscard]] SIZE Extent() const;  // in pixels; 0 x 0 without a bitmap
  explicit operator bool() const { return static_cast<bool>(bitmap); }
  void Reset();

 private:
  UniqueBitmap bitmap;
  UniqueDc dc;  // goes first: a selected bitmap cannot be deleted
};

struct Skin {
  BitmapDc background;     // 534 x 115 units, the whole panel with every key
  BitmapDc segments;       // 325 x 70 units, one bit per pixel: every glyph of the display, black
  UniqueFont displayFont;  // of the display's text line
};
extern Skin skin;

inline constexpr int kPanelWidth = 534;  // units
inline constexpr int kPanelHeight = 115;

// Loads the two bitmaps of the run's scale; false when one is missing.
bool LoadSkinBitmaps();

void CreateDisplayFont();

// Loads a bitmap resource (its number in the first set), copies it to (x, y) in its natural size, frees it.
void DrawBitmapResource(HDC dc, int bitmapId, int x, int y);

// The same, stretched to a width and height.
void StretchBitmapResource(HDC dc, int bitmapId, int x, int y, int width, int height);

}  // namespace quorvex
