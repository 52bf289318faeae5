#include "platform/dvd/closed_captions.h"

namespace quorvex {
namespace {

// More than a group of pictures may bring: what is older is late.
constexpr std::size_t kMostWaiting = 60;

}  // namespace

void ClosedCaptions::Add(std::span<const std::uint8_t> groups) {
  // What is left of the last group of pictures belongs before this one's.
  for (int field = 0; field < 2; ++field)
    while (!waiting[field].empty()) FeedOne(waiting[field], field + 1);
  for (; groups.size() >= 3; groups = groups.subspan(3)) {
    const bool valid = (groups[0] & 4) != 0;
    const int kind = groups[0] & 3;
    if (valid && kind < 2 && waiting[kind].size() < kMostWaiting)
      waiting[kind].push_back({groups[1], groups[2]});
  }
}

void ClosedCaptions::FeedOne(std::deque<Pair>& pairs, int field) {
  if (pairs.empty()) return;
  const Pair pair = pairs.front();
  pairs.pop_front();
  if (decoder.Feed(field, pair.first, pair.second)) ++changes;
}

void ClosedCaptions::Advance() {
  if (decoder.Channel() != wishes.channel) {
    decoder.SetChannel(wishes.channel);
    ++changes;
  }
  FeedOne(waiting[0], 1);
  FeedOne(waiting[1], 2);
}

void ClosedCaptions::Forget() {
  decoder.Clear();
  for (auto& pairs : waiting) pairs.clear();
  ++changes;
}

std::uint64_t ClosedCaptions::Look() const {
  if (!wishes.shown) return 0;
  return (changes + 1) * 2 + (wishes.opaque ? 1 : 0);
}

void ClosedCaptions::Draw(const PictureView& picture) {
  if (wishes.shown) painter.Paint(picture, decoder.Shown(), wishes.opaque);
}

}  // namespace quorvex
