#include "panel/display_digits.h"

#include <gtest/gtest.h>

namespace quorvex {
namespace {

constexpr int kNone = 10;

TEST(DisplayDigits, NumbersLoseLeadingZerosAndAZeroShowsNothing) {
  using Digits = std::array<int, 3>;
  EXPECT_EQ(NumberDigits(0), (Digits{kNone, kNone, kNone}));
  EXPECT_EQ(NumberDigits(7), (Digits{kNone, kNone, 7}));
  EXPECT_EQ(NumberDigits(40), (Digits{kNone, 4, 0}));
  EXPECT_EQ(NumberDigits(105), (Digits{1, 0, 5}));
  EXPECT_EQ(NumberDigits(100), (Digits{1, 0, 0}));
  for (const int outside : {-1, 1000, 2147483647})
    EXPECT_EQ(NumberDigits(outside), (Digits{kNone, kNone, kNone})) << outside;
}

TEST(DisplayDigits, PackedTimesHoldHoursLowest) {
  EXPECT_EQ(PackTime(12, 34, 56), 0x00563412U);
  const TimeDigits time = UnpackTime(0x07563412);
  EXPECT_EQ(time.digits, (std::array<int, 6>{1, 2, 3, 4, 5, 6}));
  EXPECT_EQ(time.tenths, 7);
  EXPECT_TRUE(time.colons);
  EXPECT_FALSE(UnpackTime(kBlankTime).colons);
  EXPECT_TRUE(UnpackTime(0x00A0AAAA).colons) << "only the seconds' units decide";
}

TEST(DisplayDigits, MediaTimesArePackedToTenthsAndTheCallersNibbleStays) {
  struct Case {
    std::int64_t time;
    PackedTime packed;
    std::int64_t tenths;
  };
  const Case cases[] = {
      {0, 0xB0000000, 0},
      {999'999, 0xB0000000, 0},
      {59'900'000 * 10LL, 0xB9590000, 599},
      {600'000'000, 0xB0000100, 600},
      {36'000'000'000, 0xB0000001, 36000},
      {(((23LL * 60 + 59) * 60 + 58) * 10 + 7) * 1'000'000, 0xB7585923,
       ((23LL * 60 + 59) * 60 + 58) * 10 + 7},
  };
  for (const Case& one : cases) {
    PackedTime packed = 0xB1234567;
    EXPECT_EQ(PackDisplayTime(one.time, packed), one.tenths);
    EXPECT_EQ(packed, one.packed) << one.time;
  }
}

TEST(DisplayDigits, TheClockHasTwelveHours) {
  for (const auto& [hour, shown] : {std::pair{0, 0}, {9, 9}, {11, 11}, {12, 12}, {13, 1}, {23, 11}}) {
    const ClockDigits clock = ClockFor(hour, 5, 59);
    EXPECT_EQ(clock.digits, (std::array<int, 6>{shown / 10, shown % 10, 0, 5, 5, 9})) << hour;
    EXPECT_EQ(clock.pm, hour >= 12) << hour;
  }
}

}  // namespace
}  // namespace quorvex
