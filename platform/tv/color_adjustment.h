// What a capture card's picture controls do to a colour.
#pragma once

#include <array>
#include <cstdint>

#include "platform/common/picture_view.h"

namespace quorvex {

struct Rgb {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
  friend bool operator==(const Rgb&, const Rgb&) = default;
};

// Brightness, contrast, hue and saturation, each from 0 to 255; the picture as it is sent in the middle.
struct ColorAdjustment {
  static constexpr int kLowest = 0;
  static constexpr int kMiddle = 128;
  static constexpr int kHighest = 255;

  std::array<int, 4> values{kMiddle, kMiddle, kMiddle, kMiddle};

  [[nodiscard]] Rgb Apply(Rgb color) const;
  // The same to every pixel of a picture.
  void Apply(const PictureView& picture) const;
  friend bool operator==(const ColorAdjustment&, const ColorAdjustment&) = default;
};

}  // namespace quorvex
