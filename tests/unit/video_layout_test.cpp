#include "video/video_layout.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

namespace quorvex {
namespace {

constexpr Rect kPanel{245, 829, 779, 944};

TEST(VideoLayout, TheFrameIsCentredAboveThePanelButNeverAboveTheScreen) {
  EXPECT_EQ(FrameSize({640, 480}), (Size{670, 504}));
  EXPECT_EQ(PlaceFrame(kPanel, {670, 504}), (Point{177, 321}));
  EXPECT_EQ(PlaceFrame(kPanel, {350, 264}), (Point{337, 561}));
  EXPECT_EQ(PlaceFrame(kPanel, {535, 826}), (Point{245, 0})) << "one pixel too many halves to none";
  EXPECT_EQ(PlaceFrame(kPanel, {1950, 1104}), (Point{-463, 0}));
}

TEST(VideoLayout, APictureIsLetterBoxedOnTheScreen) {
  EXPECT_EQ(LetterBox({720, 480}, {1024, 768}), (Rect{0, 43, 1024, 725}));
  EXPECT_EQ(LetterBox({640, 480}, {1024, 768}), (Rect{0, 0, 1024, 768}));
  EXPECT_EQ(LetterBox({480, 640}, {1024, 768}), (Rect{224, 0, 800, 768}));
  EXPECT_EQ(LetterBox({65535, 65535}, {65535, 65534}), (Rect{0, 0, 65534, 65534})) << "no overflow";
}

TEST(VideoLayout, DraggingAnEdgeKeepsTheShapeAndTheOppositeEdge) {
  const Size video{640, 480};
  const Rect dragged{100, 100, 530, 600};
  for (const int edge : {1, 2, 7, 8})
    EXPECT_EQ(ConstrainSizing(edge, dragged, video), (Rect{100, 100, 530, 424})) << edge;
  for (const int edge : {3, 6})
    EXPECT_EQ(ConstrainSizing(edge, dragged, video), (Rect{100, 100, 764, 600})) << edge;
  for (const int edge : {4, 5})
    EXPECT_EQ(ConstrainSizing(edge, dragged, video), (Rect{100, 276, 530, 600})) << edge;
}

// Every pixel of the border belongs to one zone, and the corners are where they seem to be.
TEST(VideoLayout, TheBorderAnswersForTheEdgeThatIsDragged) {
  const HitZones zones = BuildHitZones({100, 80});
  const std::pair<Point, int> expected[] = {{{0, 0}, 13},   {{99, 0}, 14},  {{0, 79}, 16},  {{99, 79}, 17},
                                            {{14, 40}, 10}, {{50, 11}, 12}, {{85, 40}, 11}, {{50, 68}, 15},
                                            {{50, 40}, 0},  {{100, 40}, 0}};
  for (const auto& [point, code] : expected)
    EXPECT_EQ(CodeAt(zones, point), code) << point.x << ',' << point.y;
  for (int y = 0; y < 80; ++y) {
    for (int x = 0; x < 100; ++x) {
      int hits = 0;
      for (const HitZone& zone : zones) hits += zone.zone.Contains(Point{x, y}) ? 1 : 0;
      ASSERT_EQ(hits, 1) << x << ',' << y;
    }
  }
}

}  // namespace
}  // namespace quorvex
