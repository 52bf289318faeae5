#include "base/number_list.h"

#include <gtest/gtest.h>

namespace quorvex {
namespace {

TEST(NumberList, TakesThePiecesThatAreNumbers) {
  EXPECT_EQ(ParseNumberList("3  5 x 7 12a 0 1 ", 1000), (std::vector{3, 5, 7, 12, 1}));
  EXPECT_EQ(ParseNumberList("", 1000), std::vector<int>{});
  EXPECT_EQ(ParseNumberList("   ", 1000), std::vector<int>{});
  EXPECT_EQ(ParseNumberList("-2 99999999999 4", 1000), (std::vector{4}));
}

TEST(NumberList, TakesNoMoreThanItsLimit) {
  std::string text;
  for (int i = 1; i <= 2000; ++i) text += std::to_string(i) + ' ';
  const std::vector<int> numbers = ParseNumberList(text, 1000);
  ASSERT_EQ(numbers.size(), 1000U);
  EXPECT_EQ(numbers.back(), 1000);
}

TEST(NumberList, WritesWhatItReads) {
  const std::vector numbers{3, 1, 2};
  EXPECT_EQ(FormatNumberList(numbers), "3 1 2 ");
  EXPECT_EQ(ParseNumberList(FormatNumberList(numbers), 9), numbers);
}

}  // namespace
}  // namespace quorvex
