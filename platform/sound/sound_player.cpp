#include "platform/sound/sound_player.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "platform/common/counter_time.h"

namespace quorvex {
namespace {

constexpr std::size_t kBuffers = 14;
constexpr int kBuffersPerSecond = 50;
constexpr DWORD kLookMs = 20;

// How far ahead of what is heard the device is fed: with sound, and with silence while there is none.
constexpr MediaTime kSoundAhead = 200 * kMillisecond;
constexpr MediaTime kSilenceAhead = 80 * kMillisecond;

// How much may wait for its turn.
constexpr MediaTime kEnough = 400 * kMillisecond;

}  // namespace

SoundPlayer::~SoundPlayer() { EndThread(); }

void SoundPlayer::EndThread() {
  if (!thread.joinable()) return;
  {
    const std::scoped_lock guard(lock);
    closing = true;
    output->Wake();
  }
  thread.join();
}

void SoundPlayer::Start(const WaveFormat& format) {
  if (!output || output->Format() != format) {
    EndThread();
    const auto bytes = static_cast<std::size_t>(format.rate / kBuffersPerSecond) *
                       static_cast<std::size_t>(format.FrameBytes());
    {
      const std::scoped_lock guard(lock);
      queue.reset();
      output.reset();  // one device at a time
    }
    auto opened = std::make_unique<WaveOutput>(format, bytes, kBuffers);
    const std::scoped_lock guard(lock);
    output = std::move(opened);
    queue.emplace(format);
    position.emplace(format.rate);
    closing = false;
    thread = std::thread([this] { Work(); });
  }
  const std::scoped_lock guard(lock);
  stopped = false;
}

void SoundPlayer::Run() {
  const std::scoped_lock guard(lock);
  running = true;
  told = false;  // a graph that runs again wants to be told again
  output->Wake();
}

void SoundPlayer::Halt() {
  const std::optional<MediaTime> reached = stream.PlayedTime();
  std::unique_lock guard(lock);
  running = false;
  Silence();
  queue->Forget(reached.value_or(kForever));
  queue->Rewind();
  // Whom the end is being told to may go once this has returned.
  changed.wait(guard, [this] { return !telling; });
}

void SoundPlayer::Stop() {
  const std::scoped_lock guard(lock);
  stopped = true;
  ended = told = false;
  queue->Clear();
  changed.notify_all();
}

void SoundPlayer::Silence() {
  output->Reset();
  soundEnd = 0;
}

SoundPlayer::Taken SoundPlayer::Add(std::optional<MediaTime> begin, std::span<const std::byte> sound) {
  std::unique_lock guard(lock);
  changed.wait(guard, [this] { return stopped || flushing || queue->Waiting() < kEnough; });
  if (stopped) return Taken::kStopped;
  if (flushing) return Taken::kFlushing;
  queue->Add(begin, sound);
  changed.notify_all();
  return Taken::kYes;
}

void SoundPlayer::End() {
  const std::scoped_lock guard(lock);
  if (stopped || flushing) return;  // of what is gone already
  ended = true;
  changed.notify_all();
}

void SoundPlayer::BeginFlush() {
  const std::scoped_lock guard(lock);
  flushing = true;
  ended = told = false;
  changed.notify_all();
  if (!queue) return;  // never started
  queue->Clear();
  Silence();
  output->Wake();
}

void SoundPlayer::EndFlush() {
  const std::scoped_lock guard(lock);
  flushing = false;
}

bool SoundPlayer::AwaitCue(DWORD limitMs) {
  std::unique_lock guard(lock);
  if (limitMs != INFINITE)
    return changed.wait_for(guard, std::chrono::milliseconds(limitMs), [this] { return IsCued(); });
  changed.wait(guard, [this] { return IsCued(); });
  return true;
}

SoundPlayer::Counts SoundPlayer::Counted() {
  const std::scoped_lock guard(lock);
  if (!queue) return {};
  const int rate = output->Format().rate;
  return {Rescale(queue->Dropped(), kSecond, rate), Rescale(queue->Silence(), kSecond, rate),
          queue->Waiting()};
}

void SoundPlayer::Work() {
  for (bool busy = false;;) {
    output->Wait(busy ? kLookMs : INFINITE);
    const std::optional<MediaTime> streamTime = stream.PlayedTime();
    const SoundGain gain = stream.Gain();
    std::unique_lock guard(lock);
    if (closing) return;
    if (running) Feed(streamTime, gain);
    const MediaTime earliness = queue->Earliness();
    if (running && !told && IsAllHeard()) {
      told = telling = true;
      guard.unlock();
      stream.OnAllHeard();
      guard.lock();
      telling = false;
      changed.notify_all();
    }
    busy = IsBusy();
    guard.unlock();
    if (busy) stream.OnEarly(earliness);
  }
}

bool SoundPlayer::IsAllHeard() const {
  return ended && queue->IsEmpty() && position->TimeOf(soundEnd) <= CounterTime();
}

void SoundPlayer::Feed(std::optional<MediaTime> streamTime, const SoundGain& gain) {
  const MediaTime now = CounterTime();
  if (output->FramesFed() == 0) {
    position->Start(now);
  } else {
    position->Update(now, output->FramesPlayed());
  }
  if (told) return;
  // A device that fails is one that nobody hears: the stream goes on by what it has told last.
  output->Feed([&](std::span<std::byte> buffer) {
    const int bytes = Fill(buffer, streamTime, now);
    ApplyGain(buffer.first(static_cast<std::size_t>(bytes)), output->Format(), gain);
    return bytes;
  });
  queue->Forget(streamTime.value_or(kForever));
  changed.notify_all();
}

// Answers the bytes that go into a buffer; 0 when enough has been fed.
int SoundPlayer::Fill(std::span<std::byte> buffer, std::optional<MediaTime> streamTime, MediaTime now) {
  const MediaTime ahead = position->TimeOf(output->FramesFed()) - now;
  if (ahead > kSoundAhead) return 0;
  std::optional<MediaTime> at;
  if (streamTime) at = *streamTime + ahead;
  if (const std::size_t bytes = queue->Take(buffer, at); bytes > 0) {
    soundEnd = output->FramesFed() + static_cast<std::int64_t>(bytes) / output->Format().FrameBytes();
    return static_cast<int>(bytes);
  }
  if (ahead > kSilenceAhead) return 0;
  std::fill(buffer.begin(), buffer.end(), output->Format().Silence());
  return static_cast<int>(buffer.size());
}

}  // namespace quorvex
