// The layouts in which a card hands out its pictures, and the sizes and rates that it can do.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "base/geometry.h"
#include "platform/common/media_time.h"
#include "platform/common/picture_view.h"

namespace quorvex {

enum class PixelLayout {
  kRgb24,  // three bytes a pixel, the bottom line first
  kYuy2,   // four bytes for two pixels, the top line first
};

struct CaptureFormat {
  PixelLayout layout = PixelLayout::kRgb24;
  Size size{640, 480};
  MediaTime frameTime = kSecond * 1001 / 30000;
  friend bool operator==(const CaptureFormat&, const CaptureFormat&) = default;
};

inline constexpr std::array kCaptureSizes{Size{160, 120}, Size{176, 144}, Size{320, 240}, Size{352, 288},
                                          Size{640, 480}, Size{720, 480}, Size{720, 576}};
constexpr MediaTime kShortestFrame = kSecond / 60;
constexpr MediaTime kLongestFrame = kSecond;

// Whether a card has this size and rate.
bool IsPossible(const CaptureFormat& format);

std::size_t LineBytes(PixelLayout layout, int width);
std::size_t PictureBytes(PixelLayout layout, Size size);

// Lays a picture out; the target takes PictureBytes.
void LayOut(const PictureView& picture, PixelLayout layout, std::span<std::uint8_t> target);

}  // namespace quorvex
