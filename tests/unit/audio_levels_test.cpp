#include "mixer/audio_levels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

namespace quorvex {
namespace {

using enum AudioOperation;

TEST(AudioLevels, EveryOperationGoesOneStepAndKeepsItsRange) {
  const struct {
    AudioOperation operation;
    std::uint32_t before;
    std::uint32_t after;
  } cases[] = {
      {kVolumeUp, 40000, 42114},     {kVolumeUp, 64000, 65535},     {kVolumeUp, 65535, 65535},
      {kVolumeDown, 40000, 37886},   {kVolumeDown, 1000, 0},        {kVolumeDown, 0, 0},
      {kBalanceLeft, 32768, 30654},  {kBalanceLeft, 3000, 2114},    {kBalanceLeft, 0, 2114},
      {kBalanceLeft, 65535, 63421},  {kBalanceRight, 32768, 34882}, {kBalanceRight, 62000, 63421},
      {kBalanceRight, 65535, 63421}, {kBassUp, 65535, 65535},       {kBassDown, 2114, 0},
      {kTrebleUp, 0, 2114},          {kTrebleDown, 2000, 0},        {kReadVolume, 12345, 12345},
      {kReadBalance, 65535, 65535},
  };
  for (const auto& [operation, before, after] : cases)
    EXPECT_EQ(Adjusted(operation, before), after) << static_cast<int>(operation) << " of " << before;
}

TEST(AudioLevels, TheChannelsTellTheBalance) {
  const struct {
    Channels channels;
    std::uint32_t balance;
  } cases[] = {
      {{40000, 40000}, 32768}, {{40000, 20000}, 16384}, {{40000, 0}, 0}, {{20000, 40000}, 49151},
      {{0, 30000}, 65535},     {{65535, 65535}, 32768}, {{0, 0}, 12345}, {{65535, 65534}, 32767},
      {{1, 65535}, 65535},     {{65534, 65535}, 32768}, {{1, 1}, 32768},
  };
  for (const auto& [channels, balance] : cases)
    EXPECT_EQ(BalanceOf(channels, 12345), balance) << channels.left << ", " << channels.right;
}

TEST(AudioLevels, VolumeAndBalanceTellTheChannels) {
  const struct {
    std::uint32_t volume;
    std::uint32_t balance;
    Channels channels;
  } cases[] = {
      {40000, 30654, {40000, 37420}}, {40000, 32768, {39998, 40000}}, {40000, 32767, {40000, 40000}},
      {2114, 32768, {2113, 2114}},    {65535, 63421, {4227, 65535}},  {65535, 2114, {65535, 4228}},
      {65535, 0, {65535, 0}},         {65535, 65535, {0, 65535}},     {0, 40000, {0, 0}},
  };
  for (const auto& [volume, balance, channels] : cases)
    EXPECT_EQ(ChannelsOf(volume, balance), channels) << volume << " at " << balance;
}

TEST(AudioLevels, BalanceSurvivesVolumeKeysAtEveryLevel) {
  for (std::uint32_t balance = kLevelStep; balance <= kFullLevel - kLevelStep; balance += 97) {
    for (std::uint32_t volume = 4 * kLevelStep; volume <= kFullLevel; volume += kLevelStep) {
      const Channels channels = ChannelsOf(volume, balance);
      EXPECT_EQ(std::max(channels.left, channels.right), volume);
      const int off = static_cast<int>(BalanceOf(channels, 0)) - static_cast<int>(balance);
      ASSERT_LE(std::abs(off), 8) << volume << " at " << balance;
    }
  }
}

}  // namespace
}  // namespace quorvex
