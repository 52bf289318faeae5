// What is read ahead of a file with several streams: one reader fills it, and each stream's worker takes from
// its own queue. The reader waits while there is enough of every stream; it goes on while one stream is
// short, however much there is of the others (badly interleaved files), until a bound of all bytes.
#pragma once

#include <algorithm>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

namespace quorvex {

template <typename Packet>
class StreamBuffers {
 public:
  // Enough of a stream is `enough` packets; of all together, `mostBytes` bytes.
  StreamBuffers(std::size_t streamCount, std::size_t enough, std::size_t mostBytes)
      : queues(streamCount), enoughPackets(enough), mostBytesOfAll(mostBytes) {}

  // Reader: adds a packet of `bytes` bytes; waits while there is enough. False when nothing is wanted any
  // more. A packet of a closed stream is dropped.
  bool Push(std::size_t stream, Packet packet, std::size_t bytes) {
    std::unique_lock lock(mutex);
    room.wait(lock, [this] { return ended || !IsFull(); });
    if (ended) return false;
    Queue& queue = queues[stream];
    if (!queue.closed) {
      queue.packets.push_back({std::move(packet), bytes});
      allBytes += bytes;
      queue.starved = false;
      news.notify_all();
    }
    return !AllClosed();
  }

  // Reader: there is no more to come. What is there is still taken.
  void Finish() {
    const std::scoped_lock lock(mutex);
    ended = true;
    news.notify_all();
  }

  // Anybody: nothing is given or wanted any more; who waits returns.
  void Abort() {
    const std::scoped_lock lock(mutex);
    ended = true;
    aborted = true;
    for (std::size_t stream = 0; stream < queues.size(); ++stream) Clear(stream);
    news.notify_all();
    room.notify_all();
  }

  // Whether it was Abort that ended it.
  [[nodiscard]] bool IsAborted() {
    const std::scoped_lock lock(mutex);
    return aborted;
  }

  enum class Popped { kPacket, kStarved, kOver };

  // Worker: waits for the next packet. kStarved, once until the next one comes: all others are full, and the
  // reader waits for them.
  Popped Pop(std::size_t stream, Packet& packet) {
    std::unique_lock lock(mutex);
    Queue& queue = queues[stream];
    news.wait(lock, [&] {
      return ended || !queue.packets.empty() || (allBytes >= mostBytesOfAll && !queue.starved);
    });
    if (queue.packets.empty()) {
      queue.starved = !ended;
      return ended ? Popped::kOver : Popped::kStarved;
    }
    Item item = std::move(queue.packets.front());
    queue.packets.pop_front();
    allBytes -= item.bytes;
    room.notify_all();
    packet = std::move(item.packet);
    return Popped::kPacket;
  }

  // Worker: takes no more.
  void Close(std::size_t stream) {
    const std::scoped_lock lock(mutex);
    Clear(stream);
    room.notify_all();
  }

 private:
  struct Item {
    Packet packet;
    std::size_t bytes;
  };
  struct Queue {
    std::deque<Item> packets;
    bool closed = false;
    bool starved = false;  // its worker knows that nothing comes for the present
  };

  [[nodiscard]] bool IsFull() const {
    if (allBytes >= mostBytesOfAll) return true;
    return !AllClosed() && std::ranges::all_of(queues, [this](const Queue& queue) {
      return queue.closed || queue.packets.size() >= enoughPackets;
    });
  }

  [[nodiscard]] bool AllClosed() const {
    return std::ranges::all_of(queues, [](const Queue& queue) { return queue.closed; });
  }

  void Clear(std::size_t stream) {
    Queue& queue = queues[stream];
    for (const Item& item : queue.packets) allBytes -= item.bytes;
    queue.packets.clear();
    queue.closed = true;
  }

  std::mutex mutex;  // guards what follows
  std::condition_variable news;
  std::condition_variable room;
  std::vector<Queue> queues;
  const std::size_t enoughPackets;
  const std::size_t mostBytesOfAll;
  std::size_t allBytes = 0;
  bool ended = false;
  bool aborted = false;
};

}  // namespace quorvex
