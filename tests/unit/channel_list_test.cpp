#include "devices/tv/channel_list.h"

#include <gtest/gtest.h>

#include <limits>
#include <numeric>
#include <vector>

namespace quorvex {
namespace {

std::vector<int> Entries(const PlayOrder& channels) {
  const auto span = ListedChannels(channels);
  return {span.begin(), span.end()};
}

PlayOrder ListOf(const std::vector<int>& entries) {
  PlayOrder channels;
  channels.SetOrder(entries);
  return channels;
}

TEST(ChannelList, ATunersRangeIsBounded) {
  constexpr int kMost = std::numeric_limits<int>::max();
  constexpr int kLeast = std::numeric_limits<int>::min();
  const struct {
    int lowest, highest, count;
  } cases[] = {{2, 69, 68},           {1, 1, 1},         {5, 1005, 1000}, {9, 3, 0}, {-2, 2, 5},
               {kLeast, kMost, 1000}, {kMost, kLeast, 0}};
  for (const auto& [lowest, highest, count] : cases) {
    PlayOrder channels = ListOf({7, 8, 9});
    channels.orderIndex = 2;
    SetChannelRange(channels, lowest, highest);
    EXPECT_EQ(channels.orderLength, count) << lowest << ' ' << highest;
    EXPECT_EQ(channels.orderIndex, 0);
    if (count == 0) continue;
    EXPECT_EQ(Entries(channels).front(), lowest);
    EXPECT_EQ(Entries(channels).back(), LastChannelOfRange(lowest, highest));
  }
}

TEST(ChannelList, StoredChannelsAreTakenAsTheyAre) {
  const std::pair<const char*, std::vector<int>> cases[] = {
      {"2 4 x 7 0 11 ", {2, 4, 7, 11}}, {"11   4 4", {11, 4, 4}}, {"9999 12a -3 5", {9999, 12, 5}}};
  for (const auto& [text, entries] : cases) {
    PlayOrder channels = ListOf({1, 2});
    channels.orderIndex = 1;
    EXPECT_TRUE(ReadChannels(channels, text)) << text;
    EXPECT_EQ(Entries(channels), entries);
    EXPECT_EQ(channels.orderIndex, 0);
  }
  for (const char* const text : {"", "   ", "0 0", "abc 0x5", "99999999999"}) {
    PlayOrder channels = ListOf({1, 2});
    channels.orderIndex = 1;
    EXPECT_FALSE(ReadChannels(channels, text)) << text;
    EXPECT_EQ(Entries(channels), (std::vector{1, 2}));
    EXPECT_EQ(channels.orderIndex, 1);
  }
}

TEST(ChannelList, NoNumberIsStoredOrReadInPart) {
  std::vector<int> many(1000);
  std::iota(many.begin(), many.end(), 1);
  const std::string text = StoredChannels(many);
  EXPECT_EQ(text.size(), 796U);  // nine of two characters, ninety of three, 127 of four
  EXPECT_TRUE(text.ends_with(" 226 "));
  PlayOrder channels;
  ASSERT_TRUE(ReadChannels(channels, text + "227 228 229 "));
  EXPECT_EQ(Entries(channels).back(), 227) << "it lies within the first 799 characters";
  ASSERT_TRUE(ReadChannels(channels, text + "2270 "));
  EXPECT_EQ(Entries(channels).back(), 226) << "only a part of it does";
  EXPECT_FALSE(ReadChannels(channels, std::string(5000, '7')));
  EXPECT_EQ(StoredChannels({}), "");
}

TEST(ChannelList, AChannelIsInsertedWhereItBelongs) {
  struct Case {
    std::vector<int> before;
    int channel;
    std::vector<int> after;
    int index;
  };
  const Case cases[] = {{{2, 4, 9}, 5, {2, 4, 5, 9}, 2},
                        {{2, 4, 9}, 1, {1, 2, 4, 9}, 0},
                        {{2, 4, 9}, 12, {2, 4, 9, 12}, 3},
                        {{}, 3, {3}, 0},
                        {{9, 2, 4}, 5, {5, 9, 2, 4}, 0}};
  for (const Case& one : cases) {
    PlayOrder channels = ListOf(one.before);
    EXPECT_TRUE(InsertChannel(channels, one.channel));
    EXPECT_EQ(Entries(channels), one.after) << one.channel;
    EXPECT_EQ(channels.orderIndex, one.index) << one.channel;
  }
  PlayOrder full;
  SetChannelRange(full, 2, 5000);
  full.orderIndex = 3;
  EXPECT_FALSE(InsertChannel(full, 1));
  EXPECT_EQ(Entries(full).front(), 2);
  EXPECT_EQ(full.orderIndex, 3);
}

}  // namespace
}  // namespace quorvex
