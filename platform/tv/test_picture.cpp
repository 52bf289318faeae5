#include "platform/tv/test_picture.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <string>

#include "platform/tv/block_font.h"

namespace quorvex {
namespace {

constexpr int kPixelBytes = 4;
constexpr int kBlocks = 20;
constexpr int kBlockRows = 16;  // that would fit above each other
constexpr std::uint32_t kNoSignal = 255;
constexpr Rgb kWhite{235, 235, 235};
constexpr Rgb kBlack{16, 16, 16};
constexpr std::array<Rgb, 7> kBars{{{180, 180, 180},
                                    {180, 180, 16},
                                    {16, 180, 180},
                                    {16, 180, 16},
                                    {180, 16, 180},
                                    {180, 16, 16},
                                    {16, 16, 180}}};

std::uint8_t* LineOf(const PictureView& picture, int y) { return picture.top + y * picture.stride; }

// A part of the picture in sixteenths.
Rect Part(const PictureView& picture, const Rect& sixteenths) {
  return {sixteenths.left * picture.width / 16, sixteenths.top * picture.height / 16,
          sixteenths.right * picture.width / 16, sixteenths.bottom * picture.height / 16};
}

void FillPlain(const PictureView& picture, const Rect& part, Rgb color) {
  for (int y = part.top; y < part.bottom; ++y) {
    std::uint8_t* pixel = LineOf(picture, y) + static_cast<std::ptrdiff_t>(part.left) * kPixelBytes;
    for (int x = part.left; x < part.right; ++x, pixel += kPixelBytes) {
      pixel[0] = color.blue;
      pixel[1] = color.green;
      pixel[2] = color.red;
      pixel[3] = 255;
    }
  }
}

std::string ClockText(std::int64_t hundredths) {
  std::array<char, 24> text{};
  const auto second = static_cast<int>(hundredths / 100 % 86400);
  std::snprintf(text.data(), text.size(), "%02d:%02d:%02d.%02d", second / 3600, second / 60 % 60, second % 60,
                static_cast<int>(hundredths % 100));
  return text.data();
}

}  // namespace

void TestPicture::Draw(const PictureView& picture, const Scene& scene, const ColorAdjustment& adjustment,
                       std::uint32_t number, std::int64_t clock) {
  const Size asked{picture.width, picture.height};
  if (size != asked || shown != scene || adjusted != adjustment || ground.empty()) {
    size = asked;
    shown = scene;
    adjusted = adjustment;
    PaintGround();
  }
  if (scene.signal) {
    const PictureView from = Ground();
    const auto bytes = static_cast<std::size_t>(size.width) * kPixelBytes;
    for (int y = 0; y < size.height; ++y) std::memcpy(LineOf(picture, y), LineOf(from, y), bytes);
    Write(picture, ClockText(clock), Part(picture, {4, 13, 12, 15}));
    const int left = static_cast<int>(number % 64) * picture.width / 64;
    Fill(picture, {left, picture.height * 15 / 16, left + picture.width / 64, picture.height}, kWhite);
  } else {
    DrawSnow(picture);
  }
  const std::uint32_t input = scene.signal ? static_cast<std::uint32_t>(scene.input) : kNoSignal;
  const std::uint32_t channel = scene.input == 0 ? static_cast<std::uint32_t>(scene.channel) & 0x3FF : 0;
  Blocks(picture, 0, 2U << 18 | (number & 0xFFFF));
  Blocks(picture, 1, 1U << 18 | channel << 8 | input);
}

PictureView TestPicture::Ground() {
  return {ground.data(), static_cast<std::ptrdiff_t>(size.width) * kPixelBytes, size.width, size.height};
}

void TestPicture::PaintGround() {
  ground.resize(static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height) * kPixelBytes);
  const PictureView view = Ground();
  Fill(view, {0, 0, size.width, size.height}, kBlack);
  constexpr auto kBarCount = static_cast<int>(kBars.size());
  for (int bar = 0; bar < kBarCount; ++bar) {
    // Every channel begins with another bar, so that channels look different from afar.
    const Rgb color = kBars[static_cast<std::size_t>((bar + shown.channel + shown.input) % kBarCount)];
    Fill(view,
         {bar * size.width / kBarCount, size.height / 8, (bar + 1) * size.width / kBarCount,
          size.height * 12 / 16},
         color);
  }
  if (shown.input == 0) Write(view, std::to_string(shown.channel), Part(view, {5, 3, 11, 9}));
  Write(view, shown.name, Part(view, {2, 10, 14, 12}));
}

// Noise that costs little: a generator's bits, a byte a pixel.
void TestPicture::DrawSnow(const PictureView& picture) {
  std::array<std::uint32_t, 256> greys{};
  for (std::size_t i = 0; i < greys.size(); ++i) {
    const auto grey = static_cast<std::uint8_t>(i);
    const Rgb color = adjusted.Apply({grey, grey, grey});
    greys[i] = 0xFF000000U | static_cast<std::uint32_t>(color.red) << 16 |
               static_cast<std::uint32_t>(color.green) << 8 | color.blue;
  }
  for (int y = 0; y < picture.height; ++y) {
    std::uint8_t* pixel = LineOf(picture, y);
    for (int x = 0; x < picture.width; ++x, pixel += kPixelBytes) {
      noise = noise * 1664525U + 1013904223U;
      std::memcpy(pixel, &greys[noise >> 24], kPixelBytes);
    }
  }
}

void TestPicture::Blocks(const PictureView& picture, int row, std::uint32_t bits) {
  for (int block = 0; block < kBlocks; ++block) {
    const Rect box{block * picture.width / kBlocks, row * picture.height / kBlockRows,
                   (block + 1) * picture.width / kBlocks, (row + 1) * picture.height / kBlockRows};
    FillPlain(picture, box, (bits >> block & 1U) != 0 ? kWhite : kBlack);
  }
}

void TestPicture::Fill(const PictureView& picture, const Rect& part, Rgb color) const {
  FillPlain(picture, part, adjusted.Apply(color));
}

void TestPicture::Write(const PictureView& picture, std::string_view text, const Rect& into) const {
  constexpr int kAdvance = kGlyphWidth + 1;
  const int columns = static_cast<int>(text.size()) * kAdvance + 1;
  const int block = std::min(into.Width() / columns, into.Height() / (kGlyphHeight + 2));
  if (block == 0) return;
  const int left = into.left + (into.Width() - columns * block) / 2;
  Fill(picture, {left, into.top, left + columns * block, into.top + (kGlyphHeight + 2) * block}, kBlack);
  for (std::size_t at = 0; at < text.size(); ++at) {
    const Glyph glyph = GlyphOf(text[at]);
    for (int row = 0; row < kGlyphHeight; ++row) {
      for (int column = 0; column < kGlyphWidth; ++column) {
        if ((glyph[static_cast<std::size_t>(row)] >> (kGlyphWidth - 1 - column) & 1) == 0) continue;
        const int x = left + (static_cast<int>(at) * kAdvance + column + 1) * block;
        const int y = into.top + (row + 1) * block;
        Fill(picture, {x, y, x + block, y + block}, kWhite);
      }
    }
  }
}

}  // namespace quorvex
