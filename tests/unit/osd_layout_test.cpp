#include "video/osd_layout.h"

#include <gtest/gtest.h>

#include <string>

namespace quorvex {
namespace {

// 31 segments as they look: # large, . small.
std::string Bar(int level, int barMode) {
  std::string bar;
  for (int i = 0; i < 31; ++i) bar += IsOsdSegmentLarge(i, level, 31, barMode) ? '#' : '.';
  return bar;
}

TEST(OsdLayout, ANumberIsLargerThanAWord) {
  EXPECT_EQ(OsdTextHeight("12", 480), 60);
  EXPECT_EQ(OsdTextHeight("VIDEO 1", 480), 48);
  EXPECT_EQ(OsdTextHeight(" 12", 480), 48);
  EXPECT_EQ(OsdTextHeight("0", 480), 48);
}

TEST(OsdLayout, ATextStandsAtTheTopRight) {
  EXPECT_EQ(PlaceOsdText({640, 480}, {50, 67}, {66, 67}), (Rect{524, 22, 590, 89}));
}

TEST(OsdLayout, TheBarLiesInTheLowerPartOfThePicture) {
  const OsdLevelPlaces places = PlaceOsdLevel({640, 480}, 31);
  ASSERT_EQ(places.segments.size(), 31U);
  EXPECT_EQ(places.segments[0].large, (Rect{80, 432, 88, 456}));
  EXPECT_EQ(places.segments[0].small, (Rect{82, 438, 86, 450}));
  EXPECT_EQ(places.segments[30].large.left, 80 + 30 * 16);
  EXPECT_EQ(PlaceOsdTitle({640, 480}, places, {100, 34}), (Rect{270, 390, 370, 424}));
  const OsdLevelPlaces tiny = PlaceOsdLevel({20, 20}, 31);
  EXPECT_EQ(tiny.segments[5].small.Extent(), (Size{1, 3})) << "a segment is never nothing";
}

TEST(OsdLayout, LevelsInEveryKindOfBar) {
  const std::string none(31, '.');
  EXPECT_EQ(Bar(0, 1), none);
  EXPECT_EQ(Bar(10, 1), std::string(10, '#') + std::string(21, '.'));
  EXPECT_EQ(Bar(31, 1), std::string(31, '#'));
  EXPECT_EQ(Bar(32, 1), std::string(31, '#')) << "above the range";
  EXPECT_EQ(Bar(0, 0), std::string(15, '.') + '#' + std::string(15, '.'));
  EXPECT_EQ(Bar(20, 0), std::string(15, '.') + "#..." + '#' + std::string(11, '.'));
  EXPECT_EQ(Bar(20, 2), std::string(19, '.') + '#' + std::string(11, '.'));
  EXPECT_EQ(Bar(-3, 2), none);
}

TEST(OsdLayout, AValueReachesTheSegmentItBelongsTo) {
  const auto level = [](int minimum, int maximum, int step, int value) {
    AdjustmentInfo adjustment;
    adjustment.minimum = minimum;
    adjustment.maximum = maximum;
    adjustment.step = step;
    adjustment.value = value;
    return OsdLevelOf(adjustment, 31);
  };
  EXPECT_EQ(level(0, 65535, 2114, 0), 0);
  EXPECT_EQ(level(0, 65535, 2114, 1), 1);
  EXPECT_EQ(level(0, 65535, 2114, 2114), 1);
  EXPECT_EQ(level(0, 65535, 2114, 65535), 32);
  EXPECT_EQ(level(0, 2147483647, 69273666, 2147483647), 32) << "no overflow";
  EXPECT_EQ(level(0, 10, 0, 0), 0) << "a range with fewer values than segments has no step";
  EXPECT_EQ(level(0, 10, 0, 5), 15);
  EXPECT_EQ(level(0, 10, 0, 10), 31);
  EXPECT_EQ(level(-5, 5, 0, 99), 31);
  EXPECT_EQ(level(3, 3, 0, 3), 0) << "a range of one value";
}

}  // namespace
}  // namespace quorvex
