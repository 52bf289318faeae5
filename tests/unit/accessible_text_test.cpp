#include "panel/accessible_text.h"

#include <gtest/gtest.h>

namespace quorvex {
namespace {

using Values = std::array<int, kDisplayElementCount>;

Values Dark() {
  Values values{};
  for (int i = 0; i < kDisplayElementCount; ++i) {
    if (kDisplayElements[static_cast<std::size_t>(i)].kind == ElementKind::kDigit)
      values[static_cast<std::size_t>(i)] = kBlankDigit;
  }
  return values;
}

void Set(Values& values, int element, std::initializer_list<int> run) {
  for (const int value : run) values[static_cast<std::size_t>(element++)] = value;
}

TEST(AccessibleText, SplitsAToolTipIntoNameAndShortcut) {
  EXPECT_EQ(SplitToolTip("Power (Alt+F4)").name, "Power");
  EXPECT_EQ(SplitToolTip("Power (Alt+F4)").shortcut, "Alt+F4");
  EXPECT_EQ(SplitToolTip("Repeat").name, "Repeat");
  EXPECT_EQ(SplitToolTip("Repeat").shortcut, "");
}

TEST(AccessibleText, SaysWhatThePlayingDisplayShows) {
  Values values = Dark();
  Set(values, kHoursTens, {0, 0, 0, 2, 1, 7});
  Set(values, kTrackLabel, {1});
  Set(values, kFirstNumber, {kBlankDigit, kBlankDigit, 3});
  Set(values, kOfLabel, {1});
  Set(values, kSecondNumber, {kBlankDigit, 1, 2});
  Set(values, kRepeatLamp, {1});
  Set(values, kRepeatAllLamp, {1});
  Set(values, kCdLamp, {1});
  EXPECT_EQ(DisplayAsText(values, "Morning Mood"), "00:02:17, TRACK 3 OF 12, REP, ALL, CD, Morning Mood");
}

TEST(AccessibleText, SaysTheClockAndNothingOfADarkDisplay) {
  Values values = Dark();
  EXPECT_EQ(DisplayAsText(values, ""), "");
  Set(values, kHoursTens, {1, 1, 5, 9, 0, 0});
  Set(values, kPmLamp, {1});
  Set(values, kIdleLamp, {1});
  EXPECT_EQ(DisplayAsText(values, ""), "11:59:00 PM, IDLE");
  Set(values, kTenths, {4});
  Set(values, kDecimalPoint, {1});
  Set(values, kPmLamp, {0});
  EXPECT_EQ(DisplayAsText(values, ""), "11:59:00.4, IDLE");
}

}  // namespace
}  // namespace quorvex
