// The sound that a stream has delivered and that has not been heard yet, each block with its time; it is
// taken out in the order in which it is to be heard, with silence where there is a gap and without what comes
// too late.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <span>
#include <vector>

#include "platform/common/media_time.h"
#include "platform/common/sound_clock.h"
#include "platform/common/wave_format.h"

namespace quorvex {

class SoundQueue {
 public:
  explicit SoundQueue(const WaveFormat& queued) : format(queued), clock(queued.rate) {}

  // Adds a block of whole frames. `begin`: the stream time at which it is to be heard; nothing when it
  // follows what came before.
  void Add(std::optional<MediaTime> begin, std::span<const std::byte> sound);

  // How long what has not been taken lasts.
  [[nodiscard]] MediaTime Waiting() const { return Rescale(waiting, kSecond, format.rate); }
  [[nodiscard]] bool IsEmpty() const { return waiting == 0; }

  // Fills `out` from its beginning and answers the bytes; less than fit when no more is there. `at`: the
  // stream time at which the first frame of `out` will be heard; nothing without a clock, when everything
  // follows.
  std::size_t Take(std::span<std::byte> out, std::optional<MediaTime> at);

  // Forgets what was taken and heard before a stream time.
  void Forget(MediaTime before);
  // What was taken and not forgotten will be taken again.
  void Rewind();
  void Clear();

  // By how much the sound last taken is heard too early; negative when it is late.
  [[nodiscard]] MediaTime Earliness() const { return earliness; }

  // What has happened since the beginning: frames left out because it was too late, and of silence put in.
  [[nodiscard]] std::int64_t Dropped() const { return dropped; }
  [[nodiscard]] std::int64_t Silence() const { return silence; }

 private:
  struct Block {
    MediaTime begin;
    std::vector<std::byte> sound;
  };

  [[nodiscard]] MediaTime TimeOfNext() const;
  [[nodiscard]] std::int64_t FramesLeft() const;
  void Skip(std::int64_t frames);
  std::int64_t Copy(std::span<std::byte> out);
  [[nodiscard]] std::int64_t Frames(MediaTime time) const { return Rescale(time, format.rate, kSecond); }
  [[nodiscard]] std::int64_t FramesIn(std::size_t bytes) const {
    return static_cast<std::int64_t>(bytes) / format.FrameBytes();
  }
  [[nodiscard]] std::size_t BytesOf(std::int64_t frames) const {
    return static_cast<std::size_t>(frames * format.FrameBytes());
  }

  WaveFormat format;
  SoundClock clock;
  std::deque<Block> blocks;
  std::size_t next = 0;      // the block that is taken next
  std::int64_t offset = 0;   // the frame of it
  std::int64_t waiting = 0;  // frames from there to the end
  bool timed = false;        // a block had a time
  bool following = false;    // the sound is being heard without a break
  MediaTime earliness = 0;
  std::int64_t dropped = 0;
  std::int64_t silence = 0;
};

}  // namespace quorvex
