#include "platform/tv/color_adjustment.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace quorvex {
namespace {

double Scale(int value) { return value / static_cast<double>(ColorAdjustment::kMiddle); }

// A colour is turned into another by a table of factors, in fixed point: all of a picture's pixels are.
class ColorMap {
 public:
  explicit ColorMap(const ColorAdjustment& adjustment);

  [[nodiscard]] Rgb Map(Rgb color) const {
    return {Row(rows[0], color), Row(rows[1], color), Row(rows[2], color)};
  }

 private:
  static constexpr int kPoint = 16;  // bits behind the point
  struct Factors {
    int red = 0;
    int green = 0;
    int blue = 0;
    int plus = 0;
  };

  static std::uint8_t Row(const Factors& row, Rgb color) {
    const int sum = row.red * color.red + row.green * color.green + row.blue * color.blue + row.plus;
    return static_cast<std::uint8_t>(std::clamp(sum >> kPoint, 0, 255));
  }

  std::array<Factors, 3> rows;
};

// As in the card's decoder: on luminance and the two colour differences; hue turns these by up to half a
// circle.
ColorMap::ColorMap(const ColorAdjustment& adjustment) {
  const auto& [brightness, contrast, hue, saturation] = adjustment.values;
  const double contrastGain = Scale(contrast);
  const double gain = contrastGain * Scale(saturation);
  const double angle = (Scale(hue) - 1) * std::numbers::pi;
  const double plus = brightness - ColorAdjustment::kMiddle * contrastGain;
  const double cosine = gain * std::cos(angle);
  const double sine = gain * std::sin(angle);
  const auto fixed = [](double value) { return static_cast<int>(std::lround(value * (1 << kPoint))); };
  // What a row makes of luminance and of the differences of red and blue from it.
  const auto row = [&](double ofRed, double ofBlue) {
    const double red = (ofRed * cosine - ofBlue * sine) / 1.402;
    const double blue = (ofRed * sine + ofBlue * cosine) / 1.772;
    const double grey = contrastGain - red - blue;
    constexpr double kHalf = 0.5;
    return Factors{fixed(0.299 * grey + red), fixed(0.587 * grey), fixed(0.114 * grey + blue),
                   fixed(plus + kHalf)};
  };
  rows = {row(1.402, 0), row(-0.714, -0.344), row(0, 1.772)};
}

}  // namespace

Rgb ColorAdjustment::Apply(Rgb color) const {
  return *this == ColorAdjustment{} ? color : ColorMap(*this).Map(color);
}

void ColorAdjustment::Apply(const PictureView& picture) const {
  if (*this == ColorAdjustment{}) return;
  const ColorMap map(*this);
  for (int y = 0; y < picture.height; ++y) {
    std::uint8_t* pixel = picture.top + y * picture.stride;
    for (int x = 0; x < picture.width; ++x, pixel += 4) {
      const Rgb color = map.Map({pixel[2], pixel[1], pixel[0]});
      pixel[0] = color.blue;
      pixel[1] = color.green;
      pixel[2] = color.red;
    }
  }
}

}  // namespace quorvex
