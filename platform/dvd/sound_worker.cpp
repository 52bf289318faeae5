#include "platform/dvd/sound_worker.h"

#include <algorithm>
#include <vector>

#include "platform/common/com_thread.h"

namespace quorvex {
namespace {

constexpr std::chrono::milliseconds kLookUp{20};
constexpr MediaTime kSilence = 50 * kMillisecond;
// Sound that is so late is left out.
constexpr MediaTime kTooLate = 60 * kMillisecond;

}  // namespace

void SoundWorker::Run() {
  const ComThread com;
  Forget();
  pin.DeliverNewSegment(0, kForever);
  while (!queue.IsHalted()) {
    if (queue.TakeFlush()) Forget();
    if (const std::optional<PlayItem> item = queue.Pop(kLookUp)) {
      Play(*item);
    } else if (!queue.Interrupted() && !ended) {
      BeSilent();
    }
  }
}

void SoundWorker::Forget() {
  if (parser) parser->Flush();
  converter.Reset();
  delivery.Begin();
  clock = SoundClock(kRate);
  timed = false;
  reached = filter.Now();
  ended = false;
  cueWanted = true;
}

void SoundWorker::Play(const PlayItem& item) {
  switch (item.kind) {
    case PlayItem::Kind::kData: PlayPiece(item); break;
    case PlayItem::Kind::kDrain: Drain(); break;
    case PlayItem::Kind::kEnd:
      Drain();
      ended = true;
      pin.DeliverEndOfStream();
      break;
    default: break;
  }
}

void SoundWorker::PlayPiece(const PlayItem& item) {
  if (!parser || item.stream != kind || item.number != number || item.stretch != stretch) {
    Drain();
    parser = std::make_unique<StreamParser>(item.stream);
    kind = item.stream;
    number = item.number;
    stretch = item.stretch;
    clock = SoundClock(kRate);
    timed = false;
    converter.Reset();
  }
  parser->Feed(item.bytes, item.time, [this](const AVFrame& frame) { return PlayFrame(frame); });
}

void SoundWorker::Drain() {
  if (parser && parser->IsOpen()) parser->Drain([this](const AVFrame& frame) { return PlayFrame(frame); });
}

bool SoundWorker::PlayFrame(const AVFrame& frame) {
  std::optional<MediaTime> stamped;
  if (frame.best_effort_timestamp != AV_NOPTS_VALUE) stamped = ToMediaTime(frame.best_effort_timestamp);
  timed = timed || stamped;
  if (!timed) return true;  // the end of what began before
  const MediaTime time = clock.Begin(stamped);
  const SoundSamples samples = converter.Convert(frame);
  const auto count = static_cast<std::int64_t>(samples.size() / kSoundChannels);
  clock.Advance(count);
  const MediaTime length = Rescale(count, kSecond, kRate);
  if (time + length <= 0) return true;  // of the pictures before the first one
  const MediaTime now = filter.Now();
  const MediaTime begin = timeline.Stamp(stretch, time, now, true);
  if (begin + length < now - kTooLate) return !queue.Interrupted();
  return Deliver(samples, begin);
}

bool SoundWorker::Deliver(SoundSamples samples, MediaTime begin) {
  if (queue.Interrupted()) return false;
  cueWanted = false;
  const Fed fed = delivery.Deliver(samples, begin);
  reached = begin + Rescale(static_cast<std::int64_t>(samples.size() / kSoundChannels), kSecond, kRate);
  return fed == Fed::kMore;
}

// Nothing comes: silence until shortly behind now, and what the graph waits for when it is paused.
void SoundWorker::BeSilent() {
  const MediaTime now = filter.Now();
  const bool runsDry = filter.State() == State_Running && reached < now + kSilence / 2;
  if (!runsDry && !cueWanted) return;
  const std::vector<std::int16_t> silence(static_cast<std::size_t>(Rescale(kSilence, kRate, kSecond)) *
                                          kSoundChannels);
  Deliver(silence, std::max(reached, now));
}

}  // namespace quorvex
