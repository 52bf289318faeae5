// What has been read of a disc for one stream, until its worker plays it, and how reader and worker wait for
// each other.
#pragma once

#include <array>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "platform/dvd/pack_demuxer.h"
#include "platform/dvd/place.h"

namespace quorvex {

struct PlayItem {
  enum class Kind {
    kData,     // a piece of a stream
    kPlace,    // from here on this is where the disc is
    kPalette,  // the colours of subpictures from here on
    kDrain,    // nothing follows soon: what is held back comes out
    kEnd,      // the playback is over
  };

  Kind kind = Kind::kData;
  int stretch = 0;                // of the timeline
  std::optional<DvdTicks> time = std::nullopt;  // in the stretch: when data are presented, when a place begins
  DvdStreamKind stream = DvdStreamKind::kVideo;
  int number = 0;
  std::vector<std::uint8_t> bytes = {};
  std::shared_ptr<const Place> place = nullptr;
  std::array<std::uint32_t, 16> palette{};
};

class PlayQueue {
 public:
  // `onTaken` is called whenever there is more room, or the worker has nothing to do.
  explicit PlayQueue(std::function<void()> onTaken) : taken(std::move(onTaken)) {}

  // Reader.
  void Push(PlayItem item) {
    const std::scoped_lock lock(mutex);
    bytes += item.bytes.size();
    places += item.kind == PlayItem::Kind::kPlace ? 1 : 0;
    items.push_back(std::move(item));
    idle = false;
    news.notify_all();
  }
  [[nodiscard]] std::size_t Bytes() {
    const std::scoped_lock lock(mutex);
    return bytes;
  }
  [[nodiscard]] int Places() {
    const std::scoped_lock lock(mutex);
    return places;
  }
  // Whether everything was taken and played.
  [[nodiscard]] bool IsIdle() {
    const std::scoped_lock lock(mutex);
    return idle;
  }

  // Reader: drops everything. The worker stops what it does (Interrupted) until it acknowledges.
  void BeginFlush() {
    const std::scoped_lock lock(mutex);
    items.clear();
    bytes = 0;
    places = 0;
    flushing = true;
    news.notify_all();
  }
  // Whether the worker has acknowledged within the limit.
  bool AwaitFlushed(std::chrono::milliseconds limit) {
    std::unique_lock lock(mutex);
    return news.wait_for(lock, limit, [this] { return !flushing || halted; });
  }

  // Anybody: the worker is to look up from its waiting.
  void Poke() {
    const std::scoped_lock lock(mutex);
    poked = true;
    news.notify_all();
  }
  // Anybody: the worker is to end.
  void Halt() {
    const std::scoped_lock lock(mutex);
    halted = true;
    news.notify_all();
  }
  // Before a worker starts.
  void Reset() {
    const std::scoped_lock lock(mutex);
    items.clear();
    bytes = 0;
    places = 0;
    halted = flushing = poked = idle = false;
  }

  // Worker: the next item, waiting for it a while.
  std::optional<PlayItem> Pop(std::chrono::milliseconds wait) {
    std::optional<PlayItem> item;
    {
      std::unique_lock lock(mutex);
      if (items.empty() && !idle && !flushing) {
        idle = true;
        lock.unlock();
        taken();
        lock.lock();
      }
      news.wait_for(lock, wait, [this] { return !items.empty() || flushing || halted || poked; });
      poked = false;
      if (items.empty() || flushing || halted) return std::nullopt;
      item = std::move(items.front());
      items.pop_front();
      bytes -= item->bytes.size();
      places -= item->kind == PlayItem::Kind::kPlace ? 1 : 0;
    }
    taken();
    return item;
  }
  // Worker: the next item if there is one.
  std::optional<PlayItem> TryPop() {
    const std::scoped_lock lock(mutex);
    if (items.empty()) return std::nullopt;
    PlayItem item = std::move(items.front());
    items.pop_front();
    bytes -= item.bytes.size();
    return item;
  }
  // Worker: waits; true when the time is over, false when it was called away.
  bool Sleep(std::chrono::microseconds time) {
    std::unique_lock lock(mutex);
    const bool called = news.wait_for(lock, time, [this] { return flushing || halted || poked; });
    poked = false;
    return !called;
  }
  [[nodiscard]] bool IsHalted() {
    const std::scoped_lock lock(mutex);
    return halted;
  }
  [[nodiscard]] bool Interrupted() {
    const std::scoped_lock lock(mutex);
    return flushing || halted;
  }
  // Worker: acknowledges a flush, if there is one.
  bool TakeFlush() {
    const std::scoped_lock lock(mutex);
    if (!flushing) return false;
    flushing = false;
    news.notify_all();
    return true;
  }

 private:
  const std::function<void()> taken;
  std::mutex mutex;  // guards what follows
  std::condition_variable news;
  std::deque<PlayItem> items;
  std::size_t bytes = 0;
  int places = 0;
  bool flushing = false;
  bool halted = false;
  bool poked = false;
  bool idle = false;
};

}  // namespace quorvex
