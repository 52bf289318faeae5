#include "platform/common/sound_feeder.h"

#include <algorithm>
#include <optional>

namespace quorvex {
namespace {

constexpr int kLowestRate = 8000;
constexpr int kHighestRate = 48000;

}  // namespace

int DeliveredRate(int streamRate) {
  return streamRate >= kLowestRate && streamRate <= kHighestRate ? streamRate : kHighestRate;
}

SoundFeeder::SoundFeeder(OutputPin& fed, const CodedStream& stream)
    : pin(fed),
      clock(stream.clock),
      rate(DeliveredRate(stream.parameters->sample_rate)),
      decoder(stream),
      soundClock(rate) {}

void SoundFeeder::Begin(const Segment& played) {
  segment = played;
  first = true;
  soundClock = SoundClock(rate);
  sourceFormat = -1;
  decoder.Flush();
}

Fed SoundFeeder::Feed(const AVPacket* packet) {
  Fed fed = Fed::kMore;
  decoder.Decode(packet, [&](const AVFrame& frame) {
    fed = Play(frame);
    return fed == Fed::kMore;
  });
  return fed;
}

Fed SoundFeeder::Play(const AVFrame& frame) {
  std::optional<MediaTime> stamped;
  if (frame.best_effort_timestamp != AV_NOPTS_VALUE) stamped = clock.Time(frame.best_effort_timestamp);
  const MediaTime begin = soundClock.Begin(stamped);
  if (!Convert(frame)) return Fed::kMore;
  soundClock.Advance(static_cast<std::int64_t>(converted.size() / kSoundChannels));
  return DeliverAll(begin);
}

bool SoundFeeder::PrepareResampler(const AVFrame& frame) {
  const int channels = frame.ch_layout.nb_channels;
  if (resampler && frame.format == sourceFormat && frame.sample_rate == sourceRate &&
      channels == sourceChannels)
    return true;
  sourceFormat = frame.format;
  sourceRate = frame.sample_rate;
  sourceChannels = channels;
  AVChannelLayout source{};
  if (frame.ch_layout.order == AV_CHANNEL_ORDER_UNSPEC) {
    av_channel_layout_default(&source, channels);
  } else {
    av_channel_layout_copy(&source, &frame.ch_layout);
  }
  AVChannelLayout target{};
  av_channel_layout_default(&target, kSoundChannels);
  SwrContext* made = nullptr;
  const bool ready =
      swr_alloc_set_opts2(&made, &target, AV_SAMPLE_FMT_S16, rate, &source,
                          static_cast<AVSampleFormat>(frame.format), frame.sample_rate, 0, nullptr) >= 0 &&
      swr_init(made) >= 0;
  resampler.reset(made);
  av_channel_layout_uninit(&source);
  if (!ready) resampler.reset();
  return ready;
}

// Into `converted`.
bool SoundFeeder::Convert(const AVFrame& frame) {
  if (frame.nb_samples <= 0 || !PrepareResampler(frame)) return false;
  const int room = swr_get_out_samples(resampler.get(), frame.nb_samples);
  if (room < 0) return false;
  converted.resize(static_cast<std::size_t>(room) * kSoundChannels);
  auto* target = reinterpret_cast<std::uint8_t*>(converted.data());
  const int count = swr_convert(resampler.get(), &target, room,
                                const_cast<const std::uint8_t**>(frame.extended_data), frame.nb_samples);
  converted.resize(static_cast<std::size_t>(std::max(count, 0)) * kSoundChannels);
  return count >= 0;
}

// Delivers what was converted, without what lies before the segment or behind it.
Fed SoundFeeder::DeliverAll(MediaTime begin) {
  if (begin >= segment.stop) return Fed::kOver;
  const auto total = static_cast<std::int64_t>(converted.size() / kSoundChannels);
  std::int64_t at = std::clamp<std::int64_t>(Rescale(segment.start - begin, rate, kSecond), 0, total);
  std::int64_t stop = total;
  if (segment.stop - begin < Rescale(total, kSecond, rate))
    stop = Rescale(segment.stop - begin, rate, kSecond);
  while (at < stop) {
    const std::int64_t count = std::min<std::int64_t>(stop - at, SamplesPerBuffer(rate));
    const Samples samples = Samples(converted).subspan(static_cast<std::size_t>(at * kSoundChannels),
                                                       static_cast<std::size_t>(count * kSoundChannels));
    const MediaTime from = begin - segment.start;
    const Fed fed =
        Deliver(samples, from + Rescale(at, kSecond, rate), from + Rescale(at + count, kSecond, rate));
    if (fed != Fed::kMore) return fed;
    at += count;
  }
  return Fed::kMore;
}

Fed SoundFeeder::Deliver(Samples samples, MediaTime begin, MediaTime end) {
  const ComPtr<IMediaSample> sample = pin.NextBuffer();
  BYTE* target = nullptr;
  if (!sample || FAILED(sample->GetPointer(&target)) ||
      static_cast<std::size_t>(sample->GetSize()) < samples.size_bytes())
    return Fed::kRefused;
  std::copy_n(reinterpret_cast<const BYTE*>(samples.data()), samples.size_bytes(), target);
  sample->SetActualDataLength(static_cast<long>(samples.size_bytes()));
  sample->SetTime(&begin, &end);
  sample->SetSyncPoint(TRUE);
  sample->SetPreroll(FALSE);
  sample->SetDiscontinuity(first ? TRUE : FALSE);
  first = false;
  return pin.Deliver(sample.Get()) == S_OK ? Fed::kMore : Fed::kRefused;
}

}  // namespace quorvex
