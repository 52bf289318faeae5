// Plays the sound of a disc into its pin: decodes what was read, and is silent where there is nothing, so
// that nobody waits for sound that does not come.
#pragma once

#include <atomic>
#include <memory>
#include <optional>

#include "platform/common/filter_base.h"
#include "platform/common/sound_clock.h"
#include "platform/common/sound_delivery.h"
#include "platform/dvd/play_queue.h"
#include "platform/dvd/stream_parser.h"
#include "platform/dvd/timeline.h"

namespace quorvex {

class SoundWorker {
 public:
  static constexpr int kRate = 48000;

  // Filter, pin and timeline outlive the worker.
  SoundWorker(FilterBase& owner, OutputPin& fed, Timeline& shared, std::function<void()> onTaken)
      : queue(std::move(onTaken)), filter(owner), pin(fed), timeline(shared), delivery(fed, kRate) {}

  PlayQueue queue;

  // Plays until the queue is halted; a thread's whole work.
  void Run();

  // The graph was paused: it waits for a sample.
  void Cue() {
    cueWanted = true;
    queue.Poke();
  }

 private:
  void Play(const PlayItem& item);
  void PlayPiece(const PlayItem& item);
  void Drain();
  bool PlayFrame(const AVFrame& frame);
  void BeSilent();
  void Forget();
  bool Deliver(SoundSamples samples, MediaTime begin);

  FilterBase& filter;
  OutputPin& pin;
  Timeline& timeline;
  SoundDelivery delivery;
  SoundConverter converter{kRate};
  SoundClock clock{kRate};
  std::unique_ptr<StreamParser> parser;
  DvdStreamKind kind = DvdStreamKind::kAc3;
  int number = -1;
  int stretch = 0;
  MediaTime reached = 0;  // the stream's time that sound was delivered until
  bool timed = false;     // since a time stamp has come
  bool ended = false;
  std::atomic<bool> cueWanted{true};
};

}  // namespace quorvex
