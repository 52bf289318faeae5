#include "platform/tv/capture_format.h"

#include <algorithm>

namespace quorvex {
namespace {

constexpr int kSourceBytes = 4;

void LayOutRgb24(const std::uint8_t* from, int width, std::uint8_t* to) {
  for (int x = 0; x < width; ++x, from += kSourceBytes, to += 3) std::copy_n(from, 3, to);
}

int Clamped(int value) { return std::clamp(value, 0, 255); }

// Luminance of one pixel, colour of the first of two (ITU-R BT.601).
void LayOutYuy2(const std::uint8_t* from, int width, std::uint8_t* to) {
  for (int x = 0; x < width; ++x, from += kSourceBytes, to += 2) {
    const int blue = from[0];
    const int green = from[1];
    const int red = from[2];
    to[0] = static_cast<std::uint8_t>(Clamped((66 * red + 129 * green + 25 * blue + 128) / 256 + 16));
    const int color = x % 2 == 0 ? -38 * red - 74 * green + 112 * blue : 112 * red - 94 * green - 18 * blue;
    to[1] = static_cast<std::uint8_t>(Clamped((color + 128 + 128 * 256) / 256));
  }
}

}  // namespace

bool IsPossible(const CaptureFormat& format) {
  const bool known =
      std::find(kCaptureSizes.begin(), kCaptureSizes.end(), format.size) != kCaptureSizes.end();
  return known && format.frameTime >= kShortestFrame && format.frameTime <= kLongestFrame;
}

std::size_t LineBytes(PixelLayout layout, int width) {
  const std::size_t bytes = static_cast<std::size_t>(width) * (layout == PixelLayout::kRgb24 ? 3 : 2);
  return (bytes + 3) / 4 * 4;
}

std::size_t PictureBytes(PixelLayout layout, Size size) {
  return LineBytes(layout, size.width) * static_cast<std::size_t>(size.height);
}

void LayOut(const PictureView& picture, PixelLayout layout, std::span<std::uint8_t> target) {
  const std::size_t lineBytes = LineBytes(layout, picture.width);
  for (int y = 0; y < picture.height; ++y) {
    const std::uint8_t* from = picture.top + y * picture.stride;
    const int line = layout == PixelLayout::kRgb24 ? picture.height - 1 - y : y;
    std::uint8_t* to = target.subspan(static_cast<std::size_t>(line) * lineBytes, lineBytes).data();
    if (layout == PixelLayout::kRgb24) {
      LayOutRgb24(from, picture.width, to);
    } else {
      LayOutYuy2(from, picture.width, to);
    }
  }
}

}  // namespace quorvex
