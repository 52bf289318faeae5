#include "panel/skin.h"

#include "panel/main_window.h"
#include "resources/ids.h"

namespace quorvex {

Skin skin;

bool LoadSkinBitmaps() {
  skin.background = UniqueBitmap(::LoadBitmapA(instance, MAKEINTRESOURCEA(IDB_PANEL)));
  skin.segments = UniqueBitmap(::LoadBitmapA(instance, MAKEINTRESOURCEA(IDB_SEGMENTS)));
  return skin.background && skin.segments;
}

void CreateDisplayFont() {
  LOGFONTA font{};
  font.lfHeight = -11;
  font.lfWeight = FW_BOLD;
  lstrcpynA(font.lfFaceName, "Arial", LF_FACESIZE);
  skin.displayFont = UniqueFont(::CreateFontIndirectA(&font));
}

void DrawBitmapResource(HDC dc, int bitmapId, int x, int y) {
  const UniqueBitmap bitmap(::LoadBitmapA(instance, MAKEINTRESOURCEA(bitmapId)));
  BITMAP size{};
  if (::GetObjectA(bitmap.Get(), sizeof size, &size) == 0) return;
  const BitmapDc source(dc, bitmap.Get());
  ::BitBlt(dc, x, y, size.bmWidth, size.bmHeight, source.Get(), 0, 0, SRCCOPY);
}

void StretchBitmapResource(HDC dc, int bitmapId, int x, int y, int width, int height) {
  const UniqueBitmap bitmap(::LoadBitmapA(instance, MAKEINTRESOURCEA(bitmapId)));
  BITMAP size{};
  if (::GetObjectA(bitmap.Get(), sizeof size, &size) == 0) return;
  const BitmapDc source(dc, bitmap.Get());
  ::StretchBlt(dc, x, y, width, height, source.Get(), 0, 0, size.bmWidth, size.bmHeight, SRCCOPY);
}

}  // namespace quorvex
