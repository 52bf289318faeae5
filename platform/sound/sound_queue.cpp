#include "platform/sound/sound_queue.h"

#include <algorithm>

namespace quorvex {
namespace {

// How far sound that is being heard may be off before it is broken to put it right.
constexpr MediaTime kTolerated = 30 * kMillisecond;

}  // namespace

void SoundQueue::Add(std::optional<MediaTime> begin, std::span<const std::byte> sound) {
  const std::int64_t frames = FramesIn(sound.size());
  if (frames == 0) return;
  timed = timed || begin.has_value();
  blocks.push_back({clock.Begin(begin), {sound.begin(), sound.end()}});
  clock.Advance(frames);
  waiting += frames;
}

std::size_t SoundQueue::Take(std::span<std::byte> out, std::optional<MediaTime> at) {
  const std::int64_t room = FramesIn(out.size());
  std::int64_t filled = 0;
  while (filled < room && !IsEmpty()) {
    const MediaTime early = at && timed ? TimeOfNext() - *at - Rescale(filled, kSecond, format.rate) : 0;
    const MediaTime tolerated = following ? kTolerated : kSecond / format.rate;
    following = early >= -tolerated && early <= tolerated;
    const std::span<std::byte> rest = out.subspan(BytesOf(filled));
    if (following) {
      earliness = early;
      filled += Copy(rest);
    } else if (early > 0) {
      const std::int64_t frames = std::min(room - filled, Frames(early));
      std::fill_n(rest.begin(), BytesOf(frames), format.Silence());
      silence += frames;
      filled += frames;
    } else {
      const std::int64_t frames = std::min(FramesLeft(), Frames(-early));
      dropped += frames;
      Skip(frames);
    }
  }
  return BytesOf(filled);
}

MediaTime SoundQueue::TimeOfNext() const {
  return blocks[next].begin + Rescale(offset, kSecond, format.rate);
}

std::int64_t SoundQueue::FramesLeft() const { return FramesIn(blocks[next].sound.size()) - offset; }

void SoundQueue::Skip(std::int64_t frames) {
  offset += frames;
  waiting -= frames;
  if (FramesLeft() > 0) return;
  ++next;
  offset = 0;
}

std::int64_t SoundQueue::Copy(std::span<std::byte> out) {
  const std::int64_t frames = std::min(FramesLeft(), FramesIn(out.size()));
  std::copy_n(blocks[next].sound.begin() + static_cast<std::ptrdiff_t>(BytesOf(offset)), BytesOf(frames),
              out.begin());
  Skip(frames);
  return frames;
}

void SoundQueue::Forget(MediaTime before) {
  while (next > 0) {
    const Block& oldest = blocks.front();
    if (oldest.begin + Rescale(FramesIn(oldest.sound.size()), kSecond, format.rate) > before) return;
    blocks.pop_front();
    --next;
  }
}

void SoundQueue::Rewind() {
  next = 0;
  offset = 0;
  waiting = 0;
  for (const Block& block : blocks) waiting += FramesIn(block.sound.size());
  following = false;
}

void SoundQueue::Clear() {
  blocks.clear();
  Rewind();
  clock = SoundClock(format.rate);
  timed = false;
  earliness = 0;
}

}  // namespace quorvex
