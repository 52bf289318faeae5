// Plays a stream of sound in its time: what arrives waits in a queue, and a thread feeds it to the wave
// device, so far ahead that a busy machine does not break it.
#pragma once

#include <windows.h>

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <thread>

#include "platform/common/wave_output.h"
#include "platform/sound/heard_position.h"
#include "platform/sound/sound_gain.h"
#include "platform/sound/sound_queue.h"

namespace quorvex {

// The stream that is played. Its functions are called on the player's thread, without a lock of the player's.
class PlayedStream {
 public:
  // The stream's time now; nothing when it runs without a clock.
  virtual std::optional<MediaTime> PlayedTime() = 0;
  // How loud it is to be.
  virtual SoundGain Gain() = 0;
  // By how much what is heard is before its time.
  virtual void OnEarly(MediaTime earliness) = 0;
  // The last sound has been heard.
  virtual void OnAllHeard() = 0;

 protected:
  ~PlayedStream() = default;
};

class SoundPlayer {
 public:
  // The stream outlives the player.
  explicit SoundPlayer(PlayedStream& played) : stream(played) {}
  SoundPlayer(const SoundPlayer&) = delete;
  SoundPlayer& operator=(const SoundPlayer&) = delete;
  // Closes the device; ends the thread, which must not be the caller's.
  ~SoundPlayer();

  // The stream begins to arrive: opens the device, the first time and for another format.
  void Start(const WaveFormat& format);
  // It runs; it stands still; it is over.
  void Run();
  void Halt();
  void Stop();

  enum class Taken { kYes, kFlushing, kStopped };
  // Takes a block (SoundQueue::Add); waits while enough is waiting.
  Taken Add(std::optional<MediaTime> begin, std::span<const std::byte> sound);
  // Nothing more is to come.
  void End();
  void BeginFlush();
  void EndFlush();

  // Waits until there is something to play, or to the limit; whether there is.
  bool AwaitCue(DWORD limitMs);

  struct Counts {
    MediaTime dropped;
    MediaTime silence;
    MediaTime waiting;
  };
  Counts Counted();

 private:
  void Work();
  void EndThread();
  void Feed(std::optional<MediaTime> streamTime, const SoundGain& gain);
  int Fill(std::span<std::byte> buffer, std::optional<MediaTime> streamTime, MediaTime now);
  [[nodiscard]] bool IsBusy() const { return running && !told; }
  [[nodiscard]] bool IsCued() const { return stopped || ended || !queue->IsEmpty(); }
  [[nodiscard]] bool IsAllHeard() const;
  void Silence();

  PlayedStream& stream;
  std::thread thread;
  std::mutex lock;  // guards what follows; never held while the stream is called
  std::condition_variable changed;
  std::unique_ptr<WaveOutput> output;
  std::optional<SoundQueue> queue;
  std::optional<HeardPosition> position;
  std::int64_t soundEnd = 0;  // the device's frame behind the last sound
  bool stopped = true;
  bool running = false;
  bool flushing = false;
  bool ended = false;    // the stream's end has arrived
  bool told = false;     // that it was heard to its end
  bool telling = false;  // just now
  bool closing = false;  // the thread is to end
};

}  // namespace quorvex
