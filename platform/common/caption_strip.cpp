#include "platform/common/caption_strip.h"

#include <algorithm>
#include <array>

namespace quorvex {
namespace {

struct Rgb {
  int red, green, blue;
};

// In the order of CaptionColor. Pure blue could not be read; black is meant for coloured grounds, which are
// not drawn.
constexpr std::array<Rgb, 8> kColors{{{255, 255, 255},
                                      {0, 255, 0},
                                      {80, 80, 255},
                                      {0, 255, 255},
                                      {255, 0, 0},
                                      {255, 255, 0},
                                      {255, 0, 255},
                                      {150, 150, 150}}};

// The safe area, which no television cuts off, is the middle eight tenths; it holds the columns and two
// margins.
int Edge(int length, int index, int count) { return length / 10 + index * (length * 8 / 10) / count; }
constexpr int kColumnsWithMargins = CaptionScreen::kColumns + 2;

int OutlineRadius(Size picture) { return std::max(1, picture.height / 240); }

// Lines of values in one direction: how many there are, how long, and how far apart lines and values lie.
struct Grain {
  std::size_t lines, length, lineStep, step;
};

// Every value becomes the highest of those up to `radius` places before and behind it in its line.
void Spread(std::vector<std::uint8_t>& values, const Grain& grain, std::size_t radius) {
  const std::vector<std::uint8_t> before = values;
  for (std::size_t line = 0; line < grain.lines; ++line) {
    for (std::size_t at = 0; at < grain.length; ++at) {
      std::uint8_t& value = values[line * grain.lineStep + at * grain.step];
      const std::size_t end = std::min(grain.length, at + radius + 1);
      for (std::size_t from = at - std::min(at, radius); from < end; ++from) {
        value = std::max(value, before[line * grain.lineStep + from * grain.step]);
      }
    }
  }
}

std::uint8_t Share(int value, int of255) { return static_cast<std::uint8_t>((value * of255 + 127) / 255); }

}  // namespace

Rect CaptionCellBox(Size picture, int row, int column) {
  return {.left = Edge(picture.width, column + 1, kColumnsWithMargins),
          .top = Edge(picture.height, row, CaptionScreen::kRows),
          .right = Edge(picture.width, column + 2, kColumnsWithMargins),
          .bottom = Edge(picture.height, row + 1, CaptionScreen::kRows)};
}

Rect CaptionStripBox(Size picture, int row) {
  const Rect first = CaptionCellBox(picture, row, -1);
  const Rect last = CaptionCellBox(picture, row, CaptionScreen::kColumns);
  const int radius = OutlineRadius(picture);
  return {.left = first.left,
          .top = std::max(0, first.top - radius),
          .right = last.right,
          .bottom = std::min(picture.height, last.bottom + radius)};
}

CaptionStrip::CaptionStrip(Size picture, int rowNumber, const CaptionRow& cells,
                           std::span<const std::uint8_t> coverage, bool withBackground)
    : size(picture), row(rowNumber), box(CaptionStripBox(picture, rowNumber)), pixels(coverage.size()) {
  if (withBackground) {
    Back(cells);
  } else {
    Outline(coverage, OutlineRadius(picture));
  }
  Color(cells, coverage);
}

template <typename Act>
void CaptionStrip::ForEachPixel(int firstColumn, int lastColumn, bool wholeHeight, Act act) {
  const Rect first = CaptionCellBox(size, row, firstColumn);
  const int right = CaptionCellBox(size, row, lastColumn).right;
  const int top = wholeHeight ? box.top : first.top;
  const int bottom = wholeHeight ? box.bottom : first.bottom;
  for (int y = top; y < bottom; ++y) {
    for (int x = first.left; x < right; ++x) {
      act(static_cast<std::size_t>((y - box.top) * box.Width() + x - box.left));
    }
  }
}

void CaptionStrip::Back(const CaptionRow& cells) {
  for (int column = 0; column < CaptionScreen::kColumns; ++column) {
    if (cells[static_cast<std::size_t>(column)].character == 0) continue;
    ForEachPixel(column - 1, column + 1, false, [this](std::size_t index) { pixels[index].opacity = 255; });
  }
}

void CaptionStrip::Outline(std::span<const std::uint8_t> coverage, int radius) {
  std::vector<std::uint8_t> reach(coverage.begin(), coverage.end());
  const auto width = static_cast<std::size_t>(box.Width());
  const auto height = static_cast<std::size_t>(box.Height());
  const auto around = static_cast<std::size_t>(radius);
  Spread(reach, {.lines = height, .length = width, .lineStep = width, .step = 1}, around);
  Spread(reach, {.lines = width, .length = height, .lineStep = 1, .step = width}, around);
  std::transform(reach.begin(), reach.end(), pixels.begin(),
                 [](std::uint8_t opacity) { return Pixel{.opacity = opacity}; });
}

// Italics lean out of their cell: its neighbours get its colour first, then every cell its own.
void CaptionStrip::Color(const CaptionRow& cells, std::span<const std::uint8_t> coverage) {
  for (const int reach : {1, 0}) {
    for (int column = 0; column < CaptionScreen::kColumns; ++column) {
      const CaptionCell& cell = cells[static_cast<std::size_t>(column)];
      if (cell.character == 0) continue;
      const Rgb& color = kColors[static_cast<std::size_t>(cell.color)];
      ForEachPixel(column - reach, column + reach, true, [&](std::size_t index) {
        const int covered = coverage[index];
        pixels[index] = {.blue = Share(color.blue, covered),
                         .green = Share(color.green, covered),
                         .red = Share(color.red, covered),
                         .opacity = pixels[index].opacity};
      });
    }
  }
}

void CaptionStrip::Blend(const PictureView& picture) const {
  const Pixel* pixel = pixels.data();
  for (int y = box.top; y < box.bottom; ++y) {
    std::uint8_t* target = picture.top + y * picture.stride + static_cast<std::ptrdiff_t>(box.left) * 4;
    for (int x = box.left; x < box.right; ++x, target += 4, ++pixel) {
      if (pixel->opacity == 0) continue;
      const int rest = 255 - pixel->opacity;
      target[0] = static_cast<std::uint8_t>(pixel->blue + Share(target[0], rest));
      target[1] = static_cast<std::uint8_t>(pixel->green + Share(target[1], rest));
      target[2] = static_cast<std::uint8_t>(pixel->red + Share(target[2], rest));
    }
  }
}

}  // namespace quorvex
