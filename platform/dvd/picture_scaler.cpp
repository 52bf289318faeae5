#include "platform/dvd/picture_scaler.h"

#include <algorithm>
#include <cstring>

namespace quorvex {
namespace {

constexpr int kPixel = 4;

std::uint8_t Mix(int first, int second, int weight) {
  return static_cast<std::uint8_t>((first * (256 - weight) + second * weight) >> 8);
}

}  // namespace

std::vector<PictureScaler::Tap> PictureScaler::Taps(int sourceLength, int targetLength) {
  std::vector<Tap> taps(static_cast<std::size_t>(targetLength));
  for (int i = 0; i < targetLength; ++i) {
    // In 256ths of a source pixel, from the first one's centre.
    const std::int64_t at = (std::int64_t{2} * i + 1) * sourceLength * 128 / targetLength - 128;
    const std::int64_t inside = std::clamp<std::int64_t>(at, 0, std::int64_t{256} * (sourceLength - 1));
    Tap& tap = taps[static_cast<std::size_t>(i)];
    tap.first = static_cast<int>(inside >> 8);
    tap.second = std::min(tap.first + 1, sourceLength - 1);
    tap.weight = static_cast<int>(inside & 255);
  }
  return taps;
}

void PictureScaler::Prepare(const PictureView& source, const PictureView& target) {
  if (source.width == sourceWidth && source.height == sourceHeight && target.width == targetWidth &&
      target.height == targetHeight)
    return;
  sourceWidth = source.width;
  sourceHeight = source.height;
  targetWidth = target.width;
  targetHeight = target.height;
  columns = Taps(sourceWidth, targetWidth);
  rows = Taps(sourceHeight, targetHeight);
  mixed.resize(static_cast<std::size_t>(sourceWidth) * kPixel);
}

// The row between two, into `out`.
void PictureScaler::MixRows(const PictureView& source, const Tap& tap, std::uint8_t* out) const {
  const std::uint8_t* first = source.top + tap.first * source.stride;
  const std::uint8_t* second = source.top + tap.second * source.stride;
  const std::size_t count = static_cast<std::size_t>(sourceWidth) * kPixel;
  if (tap.weight == 0) {
    std::memcpy(out, first, count);
    return;
  }
  const auto weight = static_cast<std::uint16_t>(tap.weight);
  const auto other = static_cast<std::uint16_t>(256 - weight);
  for (std::size_t i = 0; i < count; ++i)
    out[i] =
        static_cast<std::uint8_t>(static_cast<std::uint16_t>(first[i] * other + second[i] * weight) >> 8);
}

void PictureScaler::MixColumns(std::uint8_t* out) const {
  for (const Tap& tap : columns) {
    const std::uint8_t* first = mixed.data() + static_cast<std::ptrdiff_t>(tap.first) * kPixel;
    const std::uint8_t* second = mixed.data() + static_cast<std::ptrdiff_t>(tap.second) * kPixel;
    for (int part = 0; part < kPixel; ++part) out[part] = Mix(first[part], second[part], tap.weight);
    out += kPixel;
  }
}

void PictureScaler::Scale(const PictureView& source, const PictureView& target) {
  Prepare(source, target);
  const bool sameWidth = sourceWidth == targetWidth;
  for (int y = 0; y < target.height; ++y) {
    std::uint8_t* const out = target.top + y * target.stride;
    MixRows(source, rows[static_cast<std::size_t>(y)], sameWidth ? out : mixed.data());
    if (!sameWidth) MixColumns(out);
  }
}

}  // namespace quorvex
