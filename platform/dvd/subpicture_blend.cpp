// Subpictures into pictures.
#include <algorithm>

#include "platform/dvd/subpicture.h"

namespace quorvex {
namespace {

// A pixel value as it is drawn.
struct Ink {
  std::array<int, 3> bgr{};
  int opacity = 0;  // 0 to 15
};

using Inks = std::array<Ink, 4>;

// From 0x00YYCrCb of a standard-definition video (BT.601, black 16 and white 235), in steps of 1/1024.
std::array<int, 3> Bgr(std::uint32_t color) {
  const int y = 1192 * (static_cast<int>(color >> 16 & 0xFF) - 16);
  const int cr = static_cast<int>(color >> 8 & 0xFF) - 128;
  const int cb = static_cast<int>(color & 0xFF) - 128;
  std::array<int, 3> bgr{y + 2066 * cb, y - 833 * cr - 401 * cb, y + 1634 * cr};
  for (int& part : bgr) part = std::clamp((part + 512) / 1024, 0, 255);
  return bgr;
}

Inks InksOf(const SubpictureColors& colors, const SubpicturePalette& palette) {
  Inks inks;
  for (std::size_t value = 0; value < inks.size(); ++value) {
    inks[value] = {.bgr = Bgr(palette[colors.color[value] % palette.size()]),
                   .opacity = std::min<int>(colors.contrast[value], 15)};
  }
  return inks;
}

void Draw(std::uint8_t* pixel, const Ink& ink) {
  if (ink.opacity == 0) return;
  for (std::size_t part = 0; part < ink.bgr.size(); ++part) {
    const int mixed = ink.bgr[part] * ink.opacity + pixel[part] * (15 - ink.opacity);
    pixel[part] = static_cast<std::uint8_t>((mixed + 7) / 15);
  }
}

Rect Common(const Rect& one, const Rect& other) {
  return {.left = std::max(one.left, other.left),
          .top = std::max(one.top, other.top),
          .right = std::min(one.right, other.right),
          .bottom = std::min(one.bottom, other.bottom)};
}

// The part of the subpicture that lies in `part`, less what lies in `without`.
void DrawPart(const PictureView& picture, const Subpicture& subpicture, const Rect& part, const Inks& inks,
              const Rect& without) {
  const Rect seen = Common(Common(subpicture.area, part), {.right = picture.width, .bottom = picture.height});
  for (int y = seen.top; y < seen.bottom; ++y) {
    std::uint8_t* pixel = picture.top + y * picture.stride + static_cast<std::ptrdiff_t>(seen.left) * 4;
    const int inArea = (y - subpicture.area.top) * subpicture.area.Width() + seen.left - subpicture.area.left;
    const std::uint8_t* value = subpicture.pixels.data() + inArea;
    for (int x = seen.left; x < seen.right; ++x, pixel += 4, ++value) {
      if (!without.Contains({.x = x, .y = y})) Draw(pixel, inks[*value]);
    }
  }
}

}  // namespace

void BlendSubpicture(const PictureView& picture, const Subpicture& subpicture, std::int64_t ticks,
                     const SubpicturePalette& palette, const std::optional<ButtonHighlight>& highlight) {
  const Rect button = highlight ? highlight->area : Rect{};
  DrawPart(picture, subpicture, subpicture.area, InksOf(subpicture.ColorsAt(ticks), palette), button);
  if (highlight) DrawPart(picture, subpicture, button, InksOf(highlight->colors, palette), {});
}

}  // namespace quorvex
