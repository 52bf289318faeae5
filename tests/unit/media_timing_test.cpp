// The times of media: streams' ticks, sound counted by its samples, pictures that come too late, seeks that
// arrive twice.
#include <gtest/gtest.h>

#include "platform/common/late_pictures.h"
#include "platform/common/media_time.h"
#include "platform/common/sound_clock.h"
#include "platform/common/stream_joints.h"
#include "platform/media/shared_seeks.h"

namespace quorvex {
namespace {

TEST(MediaTimeTest, TicksAndTimesAgreeForUsualTimeBases) {
  const TickClock mpeg{1, 90000, 126000};
  EXPECT_EQ(mpeg.Time(126000), 0);
  EXPECT_EQ(mpeg.Time(126000 + 90000 * 3), 3 * kSecond);
  EXPECT_EQ(mpeg.Time(126000 - 45000), -kSecond / 2);
  const TickClock ntsc{1001, 30000, 0};
  EXPECT_EQ(ntsc.Time(1), 333667) << "rounded to the nearest";
  for (const TickClock& clock : {mpeg, ntsc, TickClock{1, 1000, -21}, TickClock{1, 44100, 0}}) {
    for (const std::int64_t tick : {0LL, 1LL, 12'345LL, 987'654'321LL}) {
      EXPECT_EQ(clock.Tick(clock.Time(tick)), tick);
    }
  }
}

TEST(MediaTimeTest, RescalingDoesNotOverflowOnTheWay) {
  EXPECT_EQ(Rescale(std::int64_t{1} << 40, kSecond, 90000), 122'167'958'641'778);
  EXPECT_EQ(Rescale(-3, 1, 2), -2) << "halves go away from zero on both sides";
  EXPECT_EQ(Rescale(3, 1, 2), 2);
}

TEST(StreamJointsTest, AStreamThatPausesIsNoJoint) {
  StreamJoints joints;
  constexpr MediaTime kPacket = 40 * kMillisecond;
  for (MediaTime time = 0; time < 20 * kSecond; time += kPacket) {
    EXPECT_EQ(joints.ShiftOf(0, time + 2 * kPacket, kPacket), 0);
    EXPECT_EQ(joints.ShiftOf(0, time, kPacket), 0) << "out of order";
    if (time < kSecond || time > 15 * kSecond) {
      EXPECT_EQ(joints.ShiftOf(1, time, kPacket), 0);
    }
  }
  // What is of the end still may come behind what is of the beginning.
  const MediaTime shift = joints.ShiftOf(0, 5 * kSecond, kPacket);
  EXPECT_EQ(5 * kSecond + shift, 20 * kSecond + 2 * kPacket);
  EXPECT_EQ(joints.ShiftOf(1, 20 * kSecond, kPacket), 0);
  EXPECT_EQ(joints.ShiftOf(1, 5 * kSecond, kPacket), shift);
  joints.Forget();
  EXPECT_EQ(joints.ShiftOf(1, 7 * kSecond, kPacket), 0);
}

TEST(SoundClockTest, CoarseTimeStampsDoNotMakeGapsButRealOnesDo) {
  SoundClock clock(44100);
  EXPECT_EQ(clock.Begin(5 * kSecond), 5 * kSecond);
  clock.Advance(1152);
  const MediaTime second = 5 * kSecond + Rescale(1152, kSecond, 44100);
  EXPECT_EQ(clock.Begin(5 * kSecond + 26 * kMillisecond), second) << "the stamp was rounded";
  clock.Advance(1152);
  EXPECT_EQ(clock.Begin(std::nullopt), 5 * kSecond + Rescale(2304, kSecond, 44100));
  EXPECT_EQ(clock.Begin(9 * kSecond), 9 * kSecond) << "a gap in the stream";
  EXPECT_EQ(clock.Begin(2 * kSecond), 2 * kSecond) << "a jump back";
}

TEST(SoundClockTest, CountingStaysExactOverHours) {
  SoundClock clock(44100);
  clock.Begin(0);
  for (int i = 0; i < 441 * 360; ++i) clock.Advance(1000);
  EXPECT_EQ(clock.Now(), 3600 * kSecond);
}

TEST(LatePicturesTest, LatePicturesAreLeftOutButSomeAreAlwaysShown) {
  LatePictures late;
  EXPECT_FALSE(late.LeaveOut(-40 * kMillisecond));
  EXPECT_FALSE(late.LeaveOut(20 * kMillisecond));
  int shown = 0;
  for (int i = 0; i < 80; ++i) shown += late.LeaveOut(200 * kMillisecond) ? 0 : 1;
  EXPECT_EQ(shown, 10);
  EXPECT_FALSE(late.IsFarBehind());
  EXPECT_FALSE(late.LeaveOut(0)) << "in time again";
}

TEST(LatePicturesTest, FarBehindUntilCaughtUp) {
  LatePictures late;
  late.LeaveOut(400 * kMillisecond);
  EXPECT_TRUE(late.IsFarBehind());
  late.LeaveOut(100 * kMillisecond);
  EXPECT_TRUE(late.IsFarBehind());
  late.LeaveOut(10 * kMillisecond);
  EXPECT_FALSE(late.IsFarBehind());
}

TEST(SharedSeeksTest, ASeekIsDoneOnceForAllPinsAndAgainWhenItIsMeantAgain) {
  SharedSeeks seeks;
  const SeekWish three{SeekWish::Place{3 * kSecond, true}, std::nullopt};
  const SeekWish four{SeekWish::Place{4 * kSecond, true}, std::nullopt};
  const SeekWish end{four.start, SeekWish::Place{5 * kSecond, false}};
  EXPECT_TRUE(seeks.Arrives(0, three));
  EXPECT_FALSE(seeks.Arrives(1, three));
  EXPECT_TRUE(seeks.Arrives(0, three)) << "the same place once more";
  EXPECT_FALSE(seeks.Arrives(1, three));
  EXPECT_TRUE(seeks.Arrives(1, four));
  EXPECT_FALSE(seeks.Arrives(0, four));
  EXPECT_TRUE(seeks.Arrives(0, end)) << "another end is another seek";
  seeks.Forget();
  EXPECT_TRUE(seeks.Arrives(1, end));
}

}  // namespace
}  // namespace quorvex
