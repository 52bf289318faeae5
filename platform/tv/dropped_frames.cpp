#include "platform/tv/dropped_frames.h"

#include <algorithm>

#include "platform/common/answer.h"

namespace quorvex {
namespace {

// How many numbers of lost pictures are kept.
constexpr std::size_t kKept = 1000;

}  // namespace

HRESULT DroppedFrames::GetNumDropped(LONG* number) {
  const std::scoped_lock guard(lock);
  return Answer(number, lost);
}

HRESULT DroppedFrames::GetNumNotDropped(LONG* number) {
  const std::scoped_lock guard(lock);
  return Answer(number, delivered);
}

HRESULT DroppedFrames::GetDroppedInfo(LONG size, LONG* numbers, LONG* copied) {
  if (numbers == nullptr || size < 0) return E_POINTER;
  const std::scoped_lock guard(lock);
  const std::size_t count = std::min(static_cast<std::size_t>(size), firstLost.size());
  std::copy_n(firstLost.begin(), count, numbers);
  return Answer(copied, count);
}

HRESULT DroppedFrames::GetAverageFrameSize(LONG* bytes) {
  const std::scoped_lock guard(lock);
  return Answer(bytes, delivered > 0 ? bytesDelivered / delivered : 0);
}

void DroppedFrames::Clear() {
  const std::scoped_lock guard(lock);
  delivered = bytesDelivered = lost = 0;
  firstLost.clear();
  told.delivered = told.lost = 0;
}

void DroppedFrames::CountDelivered(std::size_t bytes) {
  const std::scoped_lock guard(lock);
  ++delivered;
  ++told.delivered;
  bytesDelivered += static_cast<std::int64_t>(bytes);
}

void DroppedFrames::CountLost(std::int64_t first, std::int64_t count) {
  const std::scoped_lock guard(lock);
  lost += count;
  told.lost += static_cast<std::uint32_t>(count);
  for (std::int64_t i = 0; i < count && firstLost.size() < kKept; ++i)
    firstLost.push_back(static_cast<LONG>(first + i));
}

}  // namespace quorvex
