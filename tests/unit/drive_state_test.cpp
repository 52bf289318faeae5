#include "platform/cd/drive_state.h"

#include <gtest/gtest.h>

#include <random>

namespace quorvex {
namespace {

constexpr std::uint32_t kMe = 42;

DriveState WithDisc() {
  DriveState state;
  state.Insert("Z:\\disc.cue");
  return state;
}

TEST(DriveState, PlaysWithItsClockAndStopsAtTheEnd) {
  DriveState state = WithDisc();
  state.Play(100, kMe, 5000);
  state.PlayUntil(250, false);
  EXPECT_EQ(state.PositionAt(4000), 100) << "a clock that was set back does not play backwards";
  EXPECT_EQ(state.PositionAt(6000), 175);
  EXPECT_FALSE(state.Settle(6999));
  EXPECT_TRUE(state.Settle(7000));
  EXPECT_EQ(state.transport, Transport::kStopped);
  EXPECT_EQ(state.PositionAt(99999), 250);
  EXPECT_EQ(state.player, 0U);
}

TEST(DriveState, WhatPlayedWhenTheMachineWentDownIsStopped) {
  DriveState state = WithDisc();
  state.Play(100, kMe, 50000);
  state.PlayUntil(250, false);
  EXPECT_FALSE(state.Settle(50000 - DriveState::kMostClockSkew));
  EXPECT_TRUE(state.Settle(30000));
  EXPECT_EQ(state.transport, Transport::kStopped);
  EXPECT_EQ(state.position, 100);
}

TEST(DriveState, PausesWhereItIsAtItsSpeedAndSeeksWithoutForgettingThePause) {
  DriveState state = WithDisc();
  state.speedPercent = 1000;
  state.Play(0, kMe, 0);
  state.PlayUntil(100000, false);
  state.Pause(2000);
  EXPECT_EQ(state.PositionAt(9000), 1500);
  state.Seek(700, true);
  state.Pause(9500);
  EXPECT_EQ(state.transport, Transport::kPaused);
  EXPECT_EQ(state.position, 700);
}

TEST(DriveState, EveryCommandEndsThePlayingBefore) {
  DriveState state = WithDisc();
  std::uint32_t before = state.playSerial;
  const auto changed = [&] { return std::exchange(before, state.playSerial) != state.playSerial; };
  state.Play(0, kMe, 0);
  EXPECT_TRUE(changed());
  state.PlayUntil(1000, false);
  EXPECT_FALSE(changed()) << "another end is not another playing";
  state.Correct(20, 500);
  EXPECT_FALSE(changed());
  EXPECT_EQ(state.PositionAt(1500), 95);
  state.Pause(600);
  EXPECT_TRUE(changed());
  state.Seek(3, true);
  EXPECT_TRUE(changed());
  state.OpenTray();
  EXPECT_TRUE(changed());
}

TEST(DriveState, TheTrayKeepsTheDiscUntilItIsTakenOut) {
  DriveState state;
  EXPECT_FALSE(state.MediaPresent());
  state.Insert("a.cue");
  EXPECT_TRUE(state.MediaPresent());
  const std::uint32_t serial = state.mediaSerial;
  state.OpenTray();
  EXPECT_FALSE(state.MediaPresent());
  EXPECT_NE(state.mediaSerial, serial);
  state.CloseTray();
  EXPECT_TRUE(state.MediaPresent());
  EXPECT_STREQ(state.image, "a.cue");
  state.Eject();
  EXPECT_TRUE(state.trayOpen);
  state.Eject();
  state.CloseTray();
  EXPECT_FALSE(state.HasDisc());
  state.OpenTray();
  state.Insert("b.cue");
  EXPECT_FALSE(state.trayOpen) << "putting a disc in closes the tray";
}

TEST(DriveState, ANewDiscEndsWhatTheOldOnePlayedAndIsReadable) {
  DriveState state = WithDisc();
  state.unreadableTrack = 2;
  state.Play(500, kMe, 0);
  const std::uint32_t serial = state.mediaSerial;
  state.Insert("other.cue");
  EXPECT_NE(state.mediaSerial, serial);
  EXPECT_EQ(state.transport, Transport::kStopped);
  EXPECT_EQ(state.position, 0);
  EXPECT_EQ(state.unreadableTrack, 0U);
  state.Insert(std::string(5000, 'x'));
  EXPECT_TRUE(state.IsValid()) << "a path that is too long is cut, never left without its end";
}

// Whatever is done in whatever order, the drive never plays nothing, never plays an open tray and stays
// valid.
TEST(DriveState, HoldsTogetherUnderAnySequence) {
  std::mt19937 random(3);
  DriveState state;
  std::uint64_t now = 1000;
  for (int step = 0; step < 100000; ++step) {
    now += random() % 3000;
    state.Settle(now);
    switch (random() % 9) {
      case 0:
        if (state.MediaPresent()) {
          state.Play(static_cast<std::int32_t>(random() % 1000), kMe, now);
          state.PlayUntil(1000, false);
        }
        break;
      case 1: state.Pause(now); break;
      case 2: state.Stop(now); break;
      case 3: state.Seek(static_cast<std::int32_t>(random() % 1000), random() % 2 == 0); break;
      case 4: state.OpenTray(); break;
      case 5: state.CloseTray(); break;
      case 6: state.Insert("d.cue"); break;
      case 7: state.Eject(); break;
      default: state.Correct(static_cast<std::int32_t>(random() % 1000), now); break;
    }
    ASSERT_TRUE(state.IsValid()) << step;
    ASSERT_TRUE(state.transport == Transport::kStopped || state.MediaPresent()) << step;
    ASSERT_EQ(state.player != 0, state.transport == Transport::kPlaying) << step;
  }
}

}  // namespace
}  // namespace quorvex
