#include "panel/scale.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "panel/button_table.h"
#include "panel/display_elements.h"
#include "video/video_layout.h"

namespace quorvex {
namespace {

class TwiceAsLarge : public testing::Test {
 protected:
  TwiceAsLarge() { SetScale(2); }
  ~TwiceAsLarge() override { SetScale(1); }
};

TEST(Scale, TheUsersChoiceGoesBeforeTheDisplaysDensity) {
  for (const auto& [wanted, dotsPerInch] : {std::pair{0, 0}, {0, 191}, {1, 192}, {3, 96}})
    EXPECT_EQ(ScaleFor(wanted, dotsPerInch), 1) << wanted << " at " << dotsPerInch;
  for (const auto& [wanted, dotsPerInch] : {std::pair{0, 192}, {0, 288}, {2, 96}, {3, 192}, {-1, 240}})
    EXPECT_EQ(ScaleFor(wanted, dotsPerInch), 2) << wanted << " at " << dotsPerInch;
  EXPECT_EQ(Scale(), 1);
}

// Every pixel in and around the rectangle belongs to it as its unit does.
void ExpectSamePlace(const Rect& units) {
  const Rect pixels = ToPixels(units);
  for (int y = pixels.top - 2; y < pixels.bottom + 2; ++y) {
    for (int x = pixels.left - 2; x < pixels.right + 2; ++x)
      ASSERT_EQ(pixels.Contains(Point{x, y}), units.Contains(Point{x / 2, y / 2})) << x << ',' << y;
  }
}

TEST_F(TwiceAsLarge, KeysAndElementsCoverThePixelsOfTheirUnits) {
  for (const ButtonLayout& key : kButtons) ExpectSamePlace(key.Rectangle());
  for (const ElementLayout& element : kDisplayElements) ExpectSamePlace(element.Rectangle());
}

TEST_F(TwiceAsLarge, TheVideosFrameIsTwiceAsWideAndItsPictureOpensTwiceAsLarge) {
  EXPECT_EQ(FrameSize({640, 480}), (Size{700, 528}));
  EXPECT_EQ(PictureInFrame({700, 528}), (Rect{30, 24, 670, 504}));
  EXPECT_EQ(PlaceFrame({0, 1000, 1068, 1230}, {700, 528}), (Point{184, 464}));
  EXPECT_EQ(FirstPicture({640, 480}, {3840, 2160}), (Size{1280, 960}));
  EXPECT_EQ(FirstPicture({1890, 1000}, {3840, 2160}), (Size{3780, 2000})) << "the frame just fits";
  EXPECT_EQ(FirstPicture({1891, 1000}, {3840, 2160}), (Size{1891, 1000}));
  EXPECT_EQ(FirstPicture({640, 1057}, {3840, 2160}), (Size{640, 1057}));
  EXPECT_EQ(ConstrainSizing(2, {100, 100, 560, 900}, {640, 480}), (Rect{100, 100, 560, 448}));
  const HitZones zones = BuildHitZones({200, 160});
  EXPECT_EQ(CodeAt(zones, {29, 23}), 13);
  EXPECT_EQ(CodeAt(zones, {30, 23}), 12);
  EXPECT_EQ(CodeAt(zones, {30, 24}), 0);
  EXPECT_EQ(CodeAt(zones, {170, 136}), 17);
}

TEST(Scale, AtTheUsualDensityAPictureOpensInItsOwnSize) {
  EXPECT_EQ(FirstPicture({4000, 3000}, {1280, 1024}), (Size{4000, 3000}));
  EXPECT_EQ(FirstPicture({320, 240}, {1280, 1024}), (Size{320, 240}));
}

// The relative luminance of a colour, as the guidelines for readable contents reckon it.
double Luminance(Colour colour) {
  const auto channel = [](std::uint8_t value) {
    const double share = value / 255.0;
    return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * channel(colour.red) + 0.7152 * channel(colour.green) + 0.0722 * channel(colour.blue);
}

double Contrast(Colour first, Colour second) {
  const auto [dark, bright] = std::minmax({Luminance(first), Luminance(second)});
  return (bright + 0.05) / (dark + 0.05);
}

TEST(Colours, HighContrastTellsLitFromUnlitByFifteenToOne) {
  for (const ElementLayout& element : kDisplayElements) {
    EXPECT_GT(Contrast(InHighContrast(element.lit), {0, 0, 0}), 15);
    if (element.kind == ElementKind::kDigit || element.kind == ElementKind::kLamp) {
      EXPECT_GT(Contrast(InHighContrast(element.lit), InHighContrast(element.unlit)), 15);
    }
  }
}

}  // namespace
}  // namespace quorvex
