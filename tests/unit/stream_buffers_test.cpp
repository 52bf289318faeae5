// Reading ahead: one reader, a worker for every stream, and none of them may wait for ever.
#include "platform/common/stream_buffers.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace quorvex {
namespace {

using Buffers = StreamBuffers<int>;

std::optional<int> Take(Buffers& buffers, std::size_t stream) {
  int packet = 0;
  return buffers.Pop(stream, packet) == Buffers::Popped::kPacket ? std::optional(packet) : std::nullopt;
}

// Takes everything of a stream; how many it was.
int TakeAll(Buffers& buffers, std::size_t stream) {
  int count = 0;
  while (Take(buffers, stream)) ++count;
  return count;
}

TEST(StreamBuffersTest, EveryPacketArrivesInItsStreamAndInOrderHoweverBadlyTheyAreInterleaved) {
  Buffers buffers(2, 4, 1'000'000);
  std::thread reader([&] {
    for (int i = 0; i < 500; ++i) ASSERT_TRUE(buffers.Push(0, i, 10));  // all of one stream first
    for (int i = 0; i < 500; ++i) ASSERT_TRUE(buffers.Push(1, i, 10));
    buffers.Finish();
  });
  // Stream 0 is taken only after stream 1 has ended, as when its receiver waits for the other.
  int expected = 0;
  while (const std::optional<int> packet = Take(buffers, 1)) EXPECT_EQ(*packet, expected++);
  EXPECT_EQ(expected, 500);
  expected = 0;
  while (const std::optional<int> packet = Take(buffers, 0)) EXPECT_EQ(*packet, expected++);
  EXPECT_EQ(expected, 500);
  reader.join();
  EXPECT_FALSE(buffers.IsAborted());
}

TEST(StreamBuffersTest, TheReaderWaitsWhenThereIsEnoughOfEveryStreamOrTooMuchOfAll) {
  struct Case {
    std::size_t bytes;
    int expected;
  };
  // 3 of each stream are enough; 100 bytes are too much.
  for (const Case& test : {Case{1, 6}, Case{50, 2}}) {
    Buffers buffers(2, 3, 100);
    std::atomic<int> pushed = 0;
    std::thread reader([&] {
      while (buffers.Push(static_cast<std::size_t>(pushed % 2), 0, test.bytes)) ++pushed;
    });
    for (int i = 0; i < 200 && pushed < test.expected; ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    EXPECT_EQ(pushed, test.expected);
    EXPECT_TRUE(Take(buffers, 0));
    EXPECT_TRUE(Take(buffers, 1));
    for (int i = 0; i < 200 && pushed == test.expected; ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    EXPECT_GT(pushed, test.expected) << "it goes on when something was taken";
    buffers.Abort();
    reader.join();
  }
}

TEST(StreamBuffersTest, AStreamThatHasNothingForLongIsToldSo) {
  Buffers buffers(2, 2, 100);
  std::thread reader([&] {
    for (int i = 0; i < 3; ++i) buffers.Push(0, i, 60);
    buffers.Push(1, 7, 1);
    buffers.Finish();
  });
  int packet = 0;
  EXPECT_EQ(buffers.Pop(1, packet), Buffers::Popped::kStarved) << "the reader waits for the other stream";
  EXPECT_EQ(Take(buffers, 0), 0);
  EXPECT_EQ(Take(buffers, 0), 1);
  EXPECT_EQ(buffers.Pop(1, packet), Buffers::Popped::kPacket);
  EXPECT_EQ(packet, 7);
  EXPECT_EQ(buffers.Pop(1, packet), Buffers::Popped::kOver);
  reader.join();
}

TEST(StreamBuffersTest, AbortReleasesEverybodyAndLeavesNothing) {
  Buffers buffers(2, 2, 100);
  std::thread worker([&] { EXPECT_EQ(TakeAll(buffers, 1), 0); });
  std::thread reader([&] {
    while (buffers.Push(0, 0, 60)) {
    }
  });
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  buffers.Abort();
  worker.join();
  reader.join();
  EXPECT_TRUE(buffers.IsAborted());
  EXPECT_EQ(TakeAll(buffers, 0), 0);
}

TEST(StreamBuffersTest, AClosedStreamHoldsNobodyUp) {
  Buffers buffers(2, 2, 1000);
  buffers.Close(0);
  for (int i = 0; i < 100; ++i) ASSERT_TRUE(buffers.Push(0, 0, 900)) << "dropped, not kept";
  ASSERT_TRUE(buffers.Push(1, 7, 1));
  EXPECT_EQ(Take(buffers, 1), 7);
  buffers.Close(1);
  EXPECT_FALSE(buffers.Push(1, 0, 1)) << "nobody wants anything more";
}

}  // namespace
}  // namespace quorvex
