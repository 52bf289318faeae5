#include "platform/dvd/subpicture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "tests/unit/subpicture_support.h"

namespace quorvex {
namespace {

// black, white, red, green, blue as a disc's palette has them
constexpr SubpicturePalette kPalette{0x108080, 0xEB8080, 0x51F05A, 0x912236, 0x296EF0};

// A picture of one colour, with a border that nothing may draw into.
struct Canvas {
  static constexpr std::uint8_t kGround = 100;
  static constexpr int kBorder = 2;

  Canvas(int w, int h, bool bottomUp = false) : width(w), height(h) {
    const auto line = static_cast<std::size_t>(w * 4);
    bytes.assign(line * static_cast<std::size_t>(h + 2 * kBorder), kGround);
    std::uint8_t* first = bytes.data() + line * kBorder;
    view = {.top = first, .stride = w * 4, .width = w, .height = h};
    if (bottomUp) {
      view.top = first + line * static_cast<std::size_t>(h - 1);
      view.stride = -view.stride;
    }
  }

  [[nodiscard]] std::array<int, 3> Rgb(int x, int y) const {
    const std::uint8_t* pixel = view.top + y * view.stride + x * 4;
    return {pixel[2], pixel[1], pixel[0]};
  }

  [[nodiscard]] bool BorderIsWhole() const {
    const auto isGround = [](std::uint8_t byte) { return byte == kGround; };
    const std::ptrdiff_t border = kBorder * width * 4;
    return std::all_of(bytes.begin(), bytes.begin() + border, isGround) &&
           std::all_of(bytes.end() - border, bytes.end(), isGround);
  }

  int width;
  int height;
  std::vector<std::uint8_t> bytes;
  PictureView view;
};

constexpr std::array<int, 3> kGround{100, 100, 100};

Subpicture Decoded(const UnitBytes& unit) {
  const auto result = DecodeSubpicture(unit);
  EXPECT_TRUE(result);
  return result.value_or(Subpicture{});
}

TEST(Subpicture, ReadsRunsOfEveryLength) {
  // A line of 400: three pixels (4 bits), four (8), sixteen (12), 64 (16), the rest; then one line of one
  // run.
  const UnitBytes unit{0x00, 0x24, 0x00, 0x0E, 0xD1, 0x20, 0x43, 0x01, 0x01, 0x00, 0x00, 0x00,
                       0x02, 0x00, 0x00, 0x01, 0x00, 0x0E, 0x01, 0x05, 0x00, 0x01, 0x8F, 0x00,
                       0x00, 0x01, 0x06, 0x00, 0x04, 0x00, 0x0B, 0x04, 0x12, 0x34, 0xFF, 0x00};
  const Subpicture picture = Decoded(unit);
  EXPECT_EQ(picture.area, (Rect{.right = 400, .bottom = 2}));
  EXPECT_EQ(picture.show, 1024);
  EXPECT_FALSE(picture.hide);
  std::vector<std::uint8_t> expected;
  const auto run = [&](std::size_t length, std::uint8_t value) {
    expected.insert(expected.end(), length, value);
  };
  run(3, 1);
  run(4, 2);
  run(16, 3);
  run(64, 1);
  run(313, 0);
  run(400, 2);
  ASSERT_EQ(picture.pixels.size(), expected.size());
  EXPECT_EQ(picture.pixels, expected);
  EXPECT_EQ(picture.ColorsAt(0).contrast, (std::array<std::uint8_t, 4>{4, 3, 2, 1}));
}

TEST(Subpicture, ReadsBackAnyBitmap) {
  std::mt19937 random(3);
  for (int round = 0; round < 300; ++round) {
    UnitPlan plan{.left = static_cast<int>(random() % 300), .top = static_cast<int>(random() % 300)};
    plan.width = 1 + static_cast<int>(random() % 400);
    plan.height = 1 + static_cast<int>(random() % 40);
    plan.pixels.clear();
    const auto count = static_cast<std::size_t>(plan.width * plan.height);
    while (plan.pixels.size() < count) {
      const std::size_t length = random() % 3 == 0 ? random() % 300 : random() % 6;
      plan.pixels.insert(plan.pixels.end(), length, static_cast<std::uint8_t>(random() % 4));
    }
    plan.pixels.resize(count);
    const Subpicture picture = Decoded(MakeUnit(plan));
    ASSERT_EQ(picture.area.Extent(), (Size{plan.width, plan.height}));
    ASSERT_EQ(picture.area.left, plan.left);
    ASSERT_EQ(picture.area.top, plan.top);
    ASSERT_EQ(picture.pixels, plan.pixels);
  }
}

TEST(Subpicture, IsShownHiddenAndFadedWhenItsUnitSays) {
  UnitPlan plan;
  plan.firstCommands = {0x00, 0x03, 0x43, 0x21, 0x04, 0x00, 0x00};
  plan.later = {
      {10, {0x04, 0x88, 0x88}},
      {20, {0x07, 0x00, 0x05, 1, 2, 3, 0x04, 0xFF, 0xF0}},  // a change within the picture is passed over
      {90, {0x02}}};
  const Subpicture picture = Decoded(MakeUnit(plan));
  EXPECT_TRUE(picture.forced);
  EXPECT_EQ(picture.show, 0);
  EXPECT_EQ(picture.hide, 90 * 1024);
  EXPECT_EQ(picture.ColorsAt(0).color, (std::array<std::uint8_t, 4>{1, 2, 3, 4}));
  const std::pair<std::int64_t, int> opacities[]{{-1, 0},    {0, 0},      {10239, 0},
                                                 {10240, 8}, {20480, 15}, {999999, 15}};
  for (const auto& [ticks, opacity] : opacities) {
    EXPECT_EQ(picture.ColorsAt(ticks).contrast[3], opacity) << ticks;
  }
}

TEST(Subpicture, RefusesWhatIsDamaged) {
  const UnitBytes sound = MakeUnit({.width = 20, .height = 4, .pixels = std::vector<std::uint8_t>(80, 1)});
  ASSERT_TRUE(DecodeSubpicture(sound));
  const std::size_t control = sound[3];
  const struct {
    const char* what;
    std::size_t at;
    std::uint8_t value;
  } cases[]{
      {"longer than it is", 0, 0x10},
      {"shorter than its controls", 1, static_cast<std::uint8_t>(control + 3)},
      {"its controls outside", 2, 0x10},
      {"its controls in its own head", 3, 2},
      {"the next sequence before this one", control + 3, 4},
      {"the next sequence outside", control + 2, 0x10},
      {"never shown", control + 4, 0x02},
      {"an unknown command", control + 5, 0x20},
      {"left of its right edge", control + 12, 0xFF},
      {"lines outside the unit", control + 19, 0x10},
      {"as wide as no video is", control + 13, 0xF3},
  };
  for (const auto& [what, at, value] : cases) {
    UnitBytes damaged = sound;
    damaged[at] = value;
    EXPECT_FALSE(DecodeSubpicture(damaged)) << what;
  }
  for (std::size_t size = 0; size < sound.size(); ++size) {
    EXPECT_FALSE(DecodeSubpicture(std::span(sound).first(size))) << size;
  }
}

TEST(Subpicture, IsMixedIntoThePictureByItsContrast) {
  // Four pixels of the four values, in black, white, red and green.
  const Subpicture picture{.area = {.left = 1, .top = 1, .right = 5, .bottom = 2},
                           .pixels = {0, 1, 2, 3},
                           .steps = {{.colors = {.color = {0, 1, 2, 3}, .contrast = {0, 15, 8, 15}}}}};
  for (const bool bottomUp : {false, true}) {
    Canvas canvas(8, 3, bottomUp);
    BlendSubpicture(canvas.view, picture, 0, kPalette, std::nullopt);
    EXPECT_EQ(canvas.Rgb(1, 1), kGround);
    EXPECT_EQ(canvas.Rgb(2, 1), (std::array<int, 3>{255, 255, 255}));
    EXPECT_EQ(canvas.Rgb(3, 1), (std::array<int, 3>{182, 47, 47}));
    EXPECT_EQ(canvas.Rgb(4, 1), (std::array<int, 3>{0, 255, 1}));
    EXPECT_EQ(canvas.Rgb(2, 0), kGround);
    EXPECT_EQ(canvas.Rgb(2, 2), kGround);
  }
}

TEST(Subpicture, ASelectedButtonIsSeenThoughTheSubpictureIsNot) {
  const Subpicture picture{.area = {.right = 10, .bottom = 4},
                           .pixels = std::vector<std::uint8_t>(40, 2),
                           .steps = {{.colors = {.color = {}, .contrast = {}}}}};
  Canvas canvas(10, 4);
  const ButtonHighlight button{.area = {.left = 2, .top = 1, .right = 4, .bottom = 3},
                               .colors = HighlightColors(0x04000F00)};
  EXPECT_EQ(button.colors.color, (std::array<std::uint8_t, 4>{0, 0, 4, 0}));
  BlendSubpicture(canvas.view, picture, 0, kPalette, button);
  for (int y = 0; y < 4; ++y) {
    for (int x = 0; x < 10; ++x) {
      EXPECT_EQ(canvas.Rgb(x, y)[2], button.area.Contains({.x = x, .y = y}) ? 255 : 100) << x << ' ' << y;
    }
  }
}

TEST(Subpicture, ButtonColorsReplaceThoseOfTheSubpicture) {
  const Subpicture picture{.area = {.right = 4, .bottom = 1},
                           .pixels = {1, 1, 1, 1},
                           .steps = {{.colors = {.color = {0, 1}, .contrast = {0, 15}}}}};
  Canvas canvas(4, 1);
  BlendSubpicture(canvas.view, picture, 0, kPalette,
                  ButtonHighlight{.area = {.left = 2, .right = 9, .bottom = 9}, .colors = {}});
  EXPECT_EQ(canvas.Rgb(1, 0)[0], 255);
  EXPECT_EQ(canvas.Rgb(2, 0), kGround) << "an invisible button must not show the subpicture's white";
}

}  // namespace
}  // namespace quorvex
