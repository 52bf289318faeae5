#include "panel/skin.h"

#include <utility>

#include "panel/main_window.h"
#include "panel/scale.h"
#include "resources/ids.h"

namespace quorvex {

Skin skin;

namespace {

BitmapDc LoadBitmapResource(int bitmapId) {
  if (Scale() == 2) bitmapId += IDB_DOUBLED;
  return BitmapDc(UniqueBitmap(::LoadBitmapA(instance, MAKEINTRESOURCEA(bitmapId))));
}

}  // namespace

BitmapDc::BitmapDc(UniqueBitmap held) : bitmap(std::move(held)) {
  if (!bitmap) return;
  dc = UniqueDc(::CreateCompatibleDC(nullptr));
  ::SelectObject(dc.Get(), bitmap.Get());
}

SIZE BitmapDc::Extent() const {
  BITMAP size{};
  ::GetObjectA(bitmap.Get(), sizeof size, &size);
  return {size.bmWidth, size.bmHeight};
}

void BitmapDc::Reset() {
  dc.Reset();
  bitmap.Reset();
}

bool LoadSkinBitmaps() {
  skin.background = LoadBitmapResource(IDB_PANEL);
  skin.segments = LoadBitmapResource(IDB_SEGMENTS);
  return skin.background && skin.segments;
}

void CreateDisplayFont() {
  LOGFONTA font{};
  font.lfHeight = -ToPixels(11);
  font.lfWeight = FW_BOLD;
  lstrcpynA(font.lfFaceName, "Arial", LF_FACESIZE);
  skin.displayFont = UniqueFont(::CreateFontIndirectA(&font));
}

void DrawBitmapResource(HDC dc, int bitmapId, int x, int y) {
  const BitmapDc source = LoadBitmapResource(bitmapId);
  const SIZE size = source.Extent();
  ::BitBlt(dc, x, y, size.cx, size.cy, source.Get(), 0, 0, SRCCOPY);
}

void StretchBitmapResource(HDC dc, int bitmapId, int x, int y, int width, int height) {
  const BitmapDc source = LoadBitmapResource(bitmapId);
  const SIZE size = source.Extent();
  ::StretchBlt(dc, x, y, width, height, source.Get(), 0, 0, size.cx, size.cy, SRCCOPY);
}

}  // namespace quorvex
