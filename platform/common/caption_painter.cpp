#include "platform/common/caption_painter.h"

#include <algorithm>

namespace quorvex {
namespace {

// A row's characters, white on black, in memory.
class Sheet {
 public:
  explicit Sheet(Size extent) : dc(::CreateCompatibleDC(nullptr)), size(extent) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = size.width;
    info.bmiHeader.biHeight = -size.height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    bitmap = UniqueBitmap(::CreateDIBSection(dc.Get(), &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    pixels = static_cast<const std::uint8_t*>(bits);
    ::SelectObject(dc.Get(), bitmap.Get());
    ::SetBkMode(dc.Get(), TRANSPARENT);
    ::SetTextColor(dc.Get(), RGB(255, 255, 255));
  }
  Sheet(const Sheet&) = delete;
  Sheet& operator=(const Sheet&) = delete;
  ~Sheet() { dc.Reset(); }  // before its bitmap

  void Text(Point at, wchar_t character, HFONT font) {
    const Selected selected(dc.Get(), font);
    ::TextOutW(dc.Get(), at.x, at.y, &character, 1);
  }

  void Bar(const Rect& bar) {
    const RECT rect{bar.left, bar.top, bar.right, bar.bottom};
    ::FillRect(dc.Get(), &rect, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
  }

  // One byte a pixel. Empty when there is no memory.
  [[nodiscard]] std::vector<std::uint8_t> Coverage() const {
    ::GdiFlush();
    if (pixels == nullptr) return {};
    std::vector<std::uint8_t> coverage(static_cast<std::size_t>(size.width) *
                                       static_cast<std::size_t>(size.height));
    for (std::size_t i = 0; i < coverage.size(); ++i) coverage[i] = pixels[i * 4 + 1];
    return coverage;
  }

 private:
  UniqueBitmap bitmap;
  UniqueDc dc;
  Size size;
  const std::uint8_t* pixels = nullptr;
};

UniqueFont MakeFont(Size cell, bool italic) {
  LOGFONTW font{};
  font.lfHeight = std::max(cell.height, 1);
  font.lfWidth = std::max(cell.width, 1);
  font.lfWeight = FW_BOLD;
  font.lfItalic = italic ? TRUE : FALSE;
  font.lfQuality = ANTIALIASED_QUALITY;
  font.lfPitchAndFamily = FIXED_PITCH | FF_MODERN;
  lstrcpynW(font.lfFaceName, L"Courier New", LF_FACESIZE);
  return UniqueFont(::CreateFontIndirectW(&font));
}

}  // namespace

void CaptionPainter::Paint(const PictureView& picture, const CaptionScreen& screen, bool opaqueBackground) {
  const Size pictureSize{picture.width, picture.height};
  if (pictureSize != size || opaqueBackground != opaque) Begin(pictureSize, opaqueBackground);
  for (int row = 0; row < CaptionScreen::kRows; ++row) {
    const auto index = static_cast<std::size_t>(row);
    if (rows[index].cells != screen.cells[index]) Draw(row, screen.cells[index]);
    rows[index].strip.Blend(picture);
  }
}

void CaptionPainter::Begin(Size picture, bool withBackground) {
  rows = {};
  if (picture != size) {
    const Size cell = CaptionCellBox(picture, 0, 0).Extent();
    upright = MakeFont(cell, false);
    italic = MakeFont(cell, true);
  }
  size = picture;
  opaque = withBackground;
}

void CaptionPainter::Draw(int row, const CaptionRow& cells) {
  KeptRow& kept = rows[static_cast<std::size_t>(row)];
  kept.cells = cells;
  const std::vector<std::uint8_t> coverage =
      cells == CaptionRow{} ? std::vector<std::uint8_t>{} : Coverage(row, cells);
  kept.strip = coverage.empty() ? CaptionStrip() : CaptionStrip(size, row, cells, coverage, opaque);
}

std::vector<std::uint8_t> CaptionPainter::Coverage(int row, const CaptionRow& cells) {
  const Rect strip = CaptionStripBox(size, row);
  Sheet sheet(strip.Extent());
  for (int column = 0; column < CaptionScreen::kColumns; ++column) {
    const CaptionCell& cell = cells[static_cast<std::size_t>(column)];
    if (cell.character == 0) continue;
    const Rect inPicture = CaptionCellBox(size, row, column);
    const Rect box{.left = inPicture.left - strip.left,
                   .top = inPicture.top - strip.top,
                   .right = inPicture.right - strip.left,
                   .bottom = inPicture.bottom - strip.top};
    const int line = std::max(1, box.Height() / 12);
    sheet.Text({.x = box.left, .y = box.top}, static_cast<wchar_t>(cell.character),
               cell.italic ? italic.Get() : upright.Get());
    if (cell.underlined)
      sheet.Bar({.left = box.left, .top = box.bottom - line, .right = box.right, .bottom = box.bottom});
  }
  return sheet.Coverage();
}

}  // namespace quorvex
