#include "platform/common/caption_painter.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/line21_script.h"

namespace quorvex {
namespace {

constexpr int kGround = 110;

// A grey picture.
struct Picture {
  explicit Picture(Size extent) : size(extent) {
    bytes.assign(static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height) * 4, kGround);
    view = {.top = bytes.data(), .stride = size.width * 4, .width = size.width, .height = size.height};
  }

  // How many pixels of a cell are other than they were, and how many of them black or of a bright colour.
  struct Count {
    int changed = 0;
    int black = 0;
    int bright = 0;
  };
  [[nodiscard]] Count CountIn(const Rect& box) const {
    Count count;
    for (int y = box.top; y < box.bottom; ++y) {
      for (int x = box.left; x < box.right; ++x) {
        const std::uint8_t* pixel = view.top + y * view.stride + x * 4;
        const int highest = std::max({pixel[0], pixel[1], pixel[2]});
        const bool isGround = pixel[0] == kGround && pixel[1] == kGround && pixel[2] == kGround;
        count.changed += isGround ? 0 : 1;
        count.black += highest < 30 ? 1 : 0;
        count.bright += highest > 200 ? 1 : 0;
      }
    }
    return count;
  }

  Size size;
  std::vector<std::uint8_t> bytes;
  PictureView view;
};

CaptionScreen ScreenOf(std::string_view script, Line21Channel channel = Line21Channel::kCaption1) {
  Line21Decoder decoder;
  decoder.SetChannel(channel);
  for (const auto& [first, second] : Line21Script(script).pairs) decoder.Feed(1, first, second);
  return decoder.Shown();
}

int Area(const Rect& box) { return box.Width() * box.Height(); }

constexpr Size kSizes[]{{720, 480}, {720, 576}, {352, 240}, {1440, 960}};

TEST(CaptionPainter, CharactersStandInTheirCells) {
  for (const Size& size : kSizes) {
    for (const auto& [row, column] : {std::pair{0, 0}, {0, 31}, {7, 12}, {14, 0}, {14, 31}}) {
      CaptionScreen screen;
      screen.cells[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)].character = U'#';
      Picture picture(size);
      CaptionPainter painter;
      painter.Paint(picture.view, screen, false);
      const Rect box = CaptionCellBox(size, row, column);
      EXPECT_GT(picture.CountIn(box).bright, Area(box) / 16) << row << ' ' << column;
      const Rect around{
          .left = box.left - 4, .top = box.top - 4, .right = box.right + 4, .bottom = box.bottom + 4};
      const Rect all{.right = size.width, .bottom = size.height};
      EXPECT_EQ(picture.CountIn(all).changed, picture.CountIn(around).changed) << row << ' ' << column;
      EXPECT_GE(box.left, size.width / 10);
      EXPECT_LE(box.right, size.width - size.width / 10);
      EXPECT_LE(box.bottom, size.height - size.height / 10);
    }
  }
}

TEST(CaptionPainter, TheOpaqueBackgroundIsBlackBehindTheCharactersAndBesideThem) {
  for (const Size& size : kSizes) {
    Picture picture(size);
    CaptionPainter painter;
    painter.Paint(picture.view, ScreenOf("{RDC}{15:4}. ."), true);
    const Rect space = CaptionCellBox(size, 14, 5);
    EXPECT_EQ(picture.CountIn(space).black, Area(space));
    for (const int margin : {3, 7}) {
      const Rect box = CaptionCellBox(size, 14, margin);
      EXPECT_EQ(picture.CountIn(box).black, Area(box)) << margin;
    }
    for (const int outside : {2, 8})
      EXPECT_EQ(picture.CountIn(CaptionCellBox(size, 14, outside)).changed, 0) << outside;
    const Rect full = CaptionCellBox(size, 14, 4);
    EXPECT_EQ(picture.CountIn(full).changed, Area(full));
  }
}

TEST(CaptionPainter, CharactersHaveTheirColorAndTheirOutline) {
  Picture picture({720, 480});
  CaptionPainter painter;
  painter.Paint(picture.view, ScreenOf("{RDC}{15 red}H"), false);
  const Rect box = CaptionCellBox(picture.size, 14, 0);
  int red = 0;
  for (int y = box.top; y < box.bottom; ++y) {
    for (int x = box.left; x < box.right; ++x) {
      const std::uint8_t* pixel = picture.view.top + y * picture.view.stride + x * 4;
      red += pixel[2] > 200 && pixel[1] < 40 && pixel[0] < 40 ? 1 : 0;
    }
  }
  EXPECT_GT(red, 30);
  EXPECT_GT(picture.CountIn(box).black, 30);
}

TEST(CaptionPainter, FollowsTheScreenThePicturesSizeAndTheBackground) {
  CaptionPainter kept;
  const struct {
    const char* script;
    Size size;
    bool opaque;
  } cases[]{{"{RDC}{15:0}ONE", {720, 480}, false}, {"{RDC}{15:0}ONE{14:0}TWO", {720, 480}, false},
            {"{RDC}{15:0}ONE", {720, 480}, false}, {"{RDC}{15:0}ONE", {720, 480}, true},
            {"{RDC}{15:0}ONE", {720, 576}, true},  {"{RDC}{15:0}ONE", {40, 30}, true},
            {"{RDC}{15:0}ONE", {8, 6}, false},     {"", {720, 480}, false}};
  for (const auto& [script, size, opaque] : cases) {
    Picture once(size);
    Picture again(size);
    CaptionPainter().Paint(once.view, ScreenOf(script), opaque);
    kept.Paint(again.view, ScreenOf(script), opaque);
    EXPECT_EQ(once.bytes, again.bytes) << script << ' ' << size.width << ' ' << opaque;
  }
}

TEST(CaptionPainter, UnderlinesAndItalicsDiffer) {
  std::vector<std::vector<std::uint8_t>> looks;
  for (const char* script : {"{RDC}{15:0}HELLO", "{RDC}{15:0u}HELLO", "{RDC}{15 italic}HELLO"}) {
    Picture picture({720, 480});
    CaptionPainter().Paint(picture.view, ScreenOf(script), false);
    looks.push_back(picture.bytes);
  }
  EXPECT_NE(looks[0], looks[1]);
  EXPECT_NE(looks[0], looks[2]);
}

}  // namespace
}  // namespace quorvex
