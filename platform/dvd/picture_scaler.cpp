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

// The row between two; one of them itself where the other has no weight.
const std::uint8_t* PictureScaler::MixRows(const PictureView& source, const Tap& tap) {
  const std::uint8_t* first = source.top + tap.first * source.stride;
  if (tap.weight == 0) return first;
  const std::uint8_t* second = source.top + tap.second * source.stride;
  std::uint8_t* out = mixed.data();
  const std::size_t count = mixed.size();
  const auto weight = static_cast<std::uint16_t>(tap.weight);
  const auto other = static_cast<std::uint16_t>(256 - weight);
  for (std::size_t i = 0; i < count; ++i)
    out[i] = static_cast<std::uint8_t>(static_cast<std::uint16_t>(first[i] * other + second[i] * weight) >> 8);
  return out;
}

void PictureScaler::Scale(const PictureView& source, const PictureView& target) {
  Prepare(source, target);
  for (int y = 0; y < target.height; ++y) {
    const std::uint8_t* row = MixRows(source, rows[static_cast<std::size_t>(y)]);
    std::uint8_t* out = target.top + y * target.stride;
    if (sourceWidth == targetWidth) {
      std::memcpy(out, row, static_cast<std::size_t>(targetWidth) * kPixel);
      continue;
    }
    for (const Tap& tap : columns) {
      const std::uint8_t* first = row + static_cast<std::ptrdiff_t>(tap.first) * kPixel;
      const std::uint8_t* second = row + static_cast<std::ptrdiff_t>(tap.second) * kPixel;
      for (int part = 0; part < kPixel; ++part) out[part] = Mix(first[part], second[part], tap.weight);
      out += kPixel;
    }
  }
}

}  // namespace quorvex
