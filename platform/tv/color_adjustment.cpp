#include "platform/tv/color_adjustment.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace quorvex {
namespace {

std::uint8_t ToByte(double value) {
  return static_cast<std::uint8_t>(std::clamp(std::lround(value), 0L, 255L));
}

double Scale(int value) { return value / static_cast<double>(ColorAdjustment::kMiddle); }

}  // namespace

// As in the card's decoder: on luminance and the two colour differences, hue turns these by up to half a
// circle.
Rgb ColorAdjustment::Apply(Rgb color) const {
  if (*this == ColorAdjustment{}) return color;
  const auto [brightness, contrast, hue, saturation] = values;
  const double grey = 0.299 * color.red + 0.587 * color.green + 0.114 * color.blue;
  const double gain = Scale(contrast) * Scale(saturation);
  const double angle = (Scale(hue) - 1) * std::numbers::pi;
  const double redAbove = (color.red - grey) / 1.402;
  const double blueAbove = (color.blue - grey) / 1.772;
  const double redTurned = gain * (redAbove * std::cos(angle) + blueAbove * std::sin(angle));
  const double blueTurned = gain * (blueAbove * std::cos(angle) - redAbove * std::sin(angle));
  const double luminance = (grey - kMiddle) * Scale(contrast) + brightness;
  return {ToByte(luminance + 1.402 * redTurned), ToByte(luminance - 0.714 * redTurned - 0.344 * blueTurned),
          ToByte(luminance + 1.772 * blueTurned)};
}

}  // namespace quorvex
