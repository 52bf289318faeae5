#include "devices/play_order.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <set>
#include <vector>

#include "devices/device_type.h"
#include "devices/number_entry.h"

namespace quorvex {
namespace {

PlayOrder OrderOf(const std::vector<int>& entries) {
  PlayOrder order;
  order.SetOrder(entries);
  return order;
}

std::vector<int> EntriesOf(const PlayOrder& order) {
  return {order.playOrder.begin(), order.playOrder.begin() + order.orderLength};
}

TEST(PlayOrder, PlainOrderCountsTheItemsAndStopsAtAThousand) {
  PlayOrder order;
  for (const int count : {0, 1, 3, 99, 1000, 1001}) {
    order.itemCount = count;
    order.SetPlainOrder();
    std::vector<int> plain(static_cast<std::size_t>(std::min(count, 1000)));
    std::iota(plain.begin(), plain.end(), 1);
    EXPECT_EQ(EntriesOf(order), plain);
  }
  EXPECT_EQ(OrderOf(std::vector<int>(1500, 4)).orderLength, 1000);
}

TEST(PlayOrder, ShufflingPermutesAndReachesEveryOrder) {
  std::mt19937 random(1);
  std::set<std::vector<int>> seen;
  for (int round = 0; round < 500; ++round) {
    PlayOrder order = OrderOf({3, 5, 5, 9});
    order.Shuffle([&] { return static_cast<int>(random() >> 1); });
    std::vector<int> entries = EntriesOf(order);
    seen.insert(entries);
    std::sort(entries.begin(), entries.end());
    ASSERT_EQ(entries, (std::vector{3, 5, 5, 9}));
  }
  EXPECT_EQ(seen.size(), 12U);
  PlayOrder empty;
  empty.Shuffle();
  EXPECT_EQ(empty.orderLength, 0);
}

TEST(PlayOrder, StepsWrapAtBothEnds) {
  PlayOrder order = OrderOf({7, 8, 9});
  EXPECT_EQ(order.IndexOf(9), 2);
  order.StepBack();
  EXPECT_EQ(order.CurrentEntry(), 9);
  EXPECT_TRUE(order.AtLastEntry());
  order.StepForward();
  EXPECT_EQ(order.CurrentEntry(), 7);
  order.StepForward();
  EXPECT_EQ(order.CurrentEntry(), 8);
  PlayOrder empty;
  EXPECT_EQ(empty.IndexOf(0), -1);
  empty.StepBack();
  empty.StepForward();
  EXPECT_EQ(empty.orderIndex, 0) << "an order without entries has no other place";
}

TEST(NumberEntry, IsCompleteWhenNoFurtherDigitCanCount) {
  for (const auto& [number, highest] : {std::pair{12, 99}, {13, 125}, {125, 125}, {5, 49}})
    EXPECT_TRUE(EntryIsComplete(number, highest)) << number << " of " << highest;
  for (const auto& [number, highest] : {std::pair{12, 125}, {4, 49}, {0, 125}})
    EXPECT_FALSE(EntryIsComplete(number, highest)) << number << " of " << highest;
}

}  // namespace
}  // namespace quorvex
