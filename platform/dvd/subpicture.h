// The subpictures of a DVD (subtitles, and what highlights a menu's buttons): a unit's bytes to a bitmap of
// two-bit pixels with its times, and such a bitmap into a picture.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "base/geometry.h"
#include "platform/common/picture_view.h"

namespace quorvex {

// The sixteen colours of a programme chain, 0x00YYCrCb each, as libdvdnav's DVDNAV_SPU_CLUT_CHANGE gives
// them.
using SubpicturePalette = std::array<std::uint32_t, 16>;

// Which of the sixteen colours a two-bit pixel has and how opaque it is (0 to 15), for pixel values 0 to 3.
struct SubpictureColors {
  std::array<std::uint8_t, 4> color{};
  std::array<std::uint8_t, 4> contrast{};
  friend bool operator==(const SubpictureColors&, const SubpictureColors&) = default;
};

// All times are 90 kHz ticks from the unit's presentation time.
struct Subpicture {
  struct ColorStep {
    std::int64_t from = 0;
    SubpictureColors colors;
    friend bool operator==(const ColorStep&, const ColorStep&) = default;
  };

  Rect area;                         // in pixels of the video
  std::vector<std::uint8_t> pixels;  // 0 to 3 each, area.Width() * area.Height() of them
  std::vector<ColorStep> steps;      // at least one, in the order of time: a subtitle may fade in or out
  std::int64_t show = 0;
  std::optional<std::int64_t> hide = std::nullopt;  // none: until the next unit
  bool forced = false;                              // shown also while subtitles are off (menus)

  [[nodiscard]] const SubpictureColors& ColorsAt(std::int64_t ticks) const;
};

// The bitmap of a whole unit (its first two bytes are its size). None when the unit is damaged or never shows
// anything; never reads outside it.
std::optional<Subpicture> DecodeSubpicture(std::span<const std::uint8_t> unit);

// A selected button: its area takes these colours instead of the subpicture's.
struct ButtonHighlight {
  Rect area;  // in pixels of the video
  SubpictureColors colors;
};

// The colours of a button from libdvdnav's palette word (four colours of four bits, then four contrasts; the
// highest for pixel value 3).
SubpictureColors HighlightColors(std::uint32_t paletteWord);

// Draws into a picture of the video's size, in the colours of that time (ticks from the unit's presentation
// time; whether it is to be seen at all then is the caller's to know). What lies outside the picture is left
// out.
void BlendSubpicture(const PictureView& picture, const Subpicture& subpicture, std::int64_t ticks,
                     const SubpicturePalette& palette, const std::optional<ButtonHighlight>& highlight);

}  // namespace quorvex
