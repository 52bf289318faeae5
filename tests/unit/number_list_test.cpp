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

}  // namespace
}  // namespace quorvex
