// The arithmetic of the sound renderer: which sound is heard when, and how loud.
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "platform/sound/heard_position.h"
#include "platform/sound/sound_gain.h"
#include "platform/sound/sound_queue.h"

namespace quorvex {
namespace {

constexpr WaveFormat kFormat{1000, 1, 16};  // a frame lasts a millisecond
constexpr MediaTime kMs = kMillisecond;

using Samples = std::vector<std::int16_t>;

// 1, 2, 3 ...
Samples Ramp(int first, int count) {
  Samples samples;
  for (int i = 0; i < count; ++i) samples.push_back(static_cast<std::int16_t>(first + i));
  return samples;
}

Samples operator+(Samples left, const Samples& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

class SoundQueueTest : public testing::Test {
 protected:
  void Add(std::optional<MediaTime> begin, const Samples& samples) {
    queue.Add(begin, std::as_bytes(std::span(samples)));
  }
  Samples Take(int frames, std::optional<MediaTime> at) {
    Samples out(static_cast<std::size_t>(frames), -1);
    out.resize(queue.Take(std::as_writable_bytes(std::span(out)), at) / 2);
    return out;
  }

  SoundQueue queue{kFormat};
};

TEST_F(SoundQueueTest, EverySampleIsPlayedAtItsTime) {
  struct Case {
    const char* what;
    MediaTime begin;  // of 40 frames
    MediaTime at;
    Samples played;  // in a buffer of 50
    int dropped;
  };
  const Case cases[] = {
      {"at once", 0, 0, Ramp(1, 40), 0},
      {"early: silence before it", 10 * kMs, 0, Samples(10) + Ramp(1, 40), 0},
      {"late: its beginning is left out", 0, 15 * kMs, Ramp(16, 25), 15},
      {"too late: all of it is", 0, 100 * kMs, {}, 40},
      {"far too early: only silence", 500 * kMs, 0, Samples(50), 0},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.what);
    queue = SoundQueue(kFormat);
    Add(one.begin, Ramp(1, 40));
    EXPECT_EQ(Take(50, one.at), one.played);
    EXPECT_EQ(queue.Dropped(), one.dropped);
  }
}

TEST_F(SoundQueueTest, SoundThatIsHeardIsNotBrokenForSmallErrors) {
  Add(0, Ramp(1, 100));
  EXPECT_EQ(Take(20, 0), Ramp(1, 20));
  EXPECT_EQ(Take(20, 45 * kMs), Ramp(21, 20)) << "25 ms late";
  EXPECT_EQ(queue.Earliness(), -25 * kMs);
  EXPECT_EQ(Take(20, 15 * kMs), Ramp(41, 20)) << "25 ms early";
  EXPECT_EQ(Take(20, 95 * kMs), Ramp(96, 5)) << "35 ms late: put right, to the sample";
  EXPECT_EQ(queue.Dropped(), 35);
}

TEST_F(SoundQueueTest, AGapInTheStreamIsSilence) {
  Add(0, Ramp(1, 20));
  Add(60 * kMs, Ramp(100, 20));
  Add(std::nullopt, Ramp(120, 5));
  EXPECT_EQ(Take(200, 0), Ramp(1, 20) + Samples(40) + Ramp(100, 25));
  EXPECT_EQ(queue.Silence(), 40);
  EXPECT_EQ(queue.Dropped(), 0);
}

TEST_F(SoundQueueTest, WhatWasNotHeardBeforeAPauseIsHeardAfterIt) {
  for (int block = 0; block < 4; ++block) Add(block * 50 * kMs, Ramp(1 + block * 50, 50));
  EXPECT_EQ(Take(180, 0), Ramp(1, 180));
  queue.Forget(110 * kMs);  // then the pause came
  queue.Rewind();
  EXPECT_EQ(queue.Waiting(), 100 * kMs);
  EXPECT_EQ(Take(200, 110 * kMs), Ramp(111, 90));
}

TEST_F(SoundQueueTest, WithoutTimesOrClockEverythingFollows) {
  Add(std::nullopt, Ramp(1, 30));
  EXPECT_EQ(Take(10, 5 * kSecond), Ramp(1, 10));
  Add(7 * kSecond, Ramp(31, 30));
  EXPECT_EQ(Take(50, std::nullopt), Ramp(11, 50));
  queue.Clear();
  EXPECT_TRUE(queue.IsEmpty());
  Add(0, Ramp(1, 10));
  EXPECT_EQ(Take(50, 0), Ramp(1, 10)) << "times begin again";
}

TEST(HeardPositionTest, GoesOnEvenlyBetweenCoarseAnswers) {
  HeardPosition heard(1000);
  heard.Start(0);
  // The device counts its buffer of 100 ms at once, then in steps.
  for (int ms = 0; ms <= 1000; ms += 7) {
    heard.Update(ms * kMs, 100 + ms / 10 * 10);
    EXPECT_NEAR(static_cast<double>(heard.TimeOf(500)) / kMs, 510, 1) << ms;
  }
}

TEST(HeardPositionTest, StandsStillWithADeviceThatRanDry) {
  HeardPosition heard(1000);
  heard.Start(0);
  heard.Update(100 * kMs, 100);
  heard.Update(400 * kMs, 100);
  EXPECT_EQ(heard.TimeOf(100), 400 * kMs);
  heard.Update(500 * kMs, 200);
  EXPECT_EQ(heard.TimeOf(200), 500 * kMs);
  // One that is ahead by more than its buffer takes it along.
  heard.Update(600 * kMs, 900);
  EXPECT_EQ(heard.TimeOf(780), 600 * kMs);
}

TEST(SoundGainTest, VolumeAndBalanceAreHundredthsOfADecibel) {
  struct Case {
    int volume, balance;
    int left, right;  // of 20000
  };
  for (const Case& one : {Case{0, 0, 20000, 20000}, Case{-602, 0, 10000, 10000}, Case{0, 602, 10000, 20000},
                          Case{0, -10000, 20000, 0}, Case{-10000, 0, 0, 0}, Case{-2000, -2000, 2000, 200}}) {
    Samples sound{20000, 20000, -20000, -20000};
    ApplyGain(std::as_writable_bytes(std::span(sound)), {44100, 2, 16}, GainOf(one.volume, one.balance));
    EXPECT_NEAR(sound[0], one.left, 5) << one.volume << " " << one.balance;
    EXPECT_NEAR(sound[1], one.right, 5) << one.volume << " " << one.balance;
    EXPECT_EQ(sound[2], -sound[0]);
  }
  std::vector<std::uint8_t> bytes{0x80, 0xff, 0x00};
  ApplyGain(std::as_writable_bytes(std::span(bytes)), {8000, 1, 8}, GainOf(-602, -10000));
  EXPECT_EQ(bytes[0], 0x80) << "silence stays";
  EXPECT_NEAR(bytes[1], 0x80 + 63, 1);
  EXPECT_NEAR(bytes[2], 0x80 - 64, 1);
}

}  // namespace
}  // namespace quorvex
