#include "platform/common/sound_feeder.h"

#include <algorithm>
#include <vector>

namespace quorvex {
namespace {

constexpr int kLowestRate = 8000;
constexpr int kHighestRate = 48000;

}  // namespace

int DeliveredRate(int streamRate) {
  return streamRate >= kLowestRate && streamRate <= kHighestRate ? streamRate : kHighestRate;
}

SoundFeeder::SoundFeeder(OutputPin& fed, const CodedStream& stream)
    : rate(DeliveredRate(stream.parameters->sample_rate)), sound(stream, rate), delivery(fed, rate) {}

void SoundFeeder::Begin(const Segment& played) {
  segment = played;
  delivery.Begin();
  sound.Begin();
}

Fed SoundFeeder::Feed(const AVPacket* packet) {
  Fed fed = Fed::kMore;
  sound.Decode(packet, [&](SoundSamples samples, MediaTime begin) {
    fed = DeliverPlayed(samples, begin);
    return fed == Fed::kMore;
  });
  return fed;
}

Fed SoundFeeder::FillIn() {
  const std::vector<std::int16_t> silence(static_cast<std::size_t>(rate / 20 * kSoundChannels));
  return delivery.Deliver(silence, segment.start - segment.Origin());
}

// Delivers samples without what lies before the segment or behind it.
Fed SoundFeeder::DeliverPlayed(SoundSamples samples, MediaTime begin) {
  if (begin >= segment.stop) return Fed::kOver;
  const auto total = static_cast<std::int64_t>(samples.size() / kSoundChannels);
  const std::int64_t start =
      std::clamp<std::int64_t>(Rescale(segment.start - begin, rate, kSecond), 0, total);
  std::int64_t stop = total;
  if (segment.stop - begin < Rescale(total, kSecond, rate))
    stop = std::max(start, Rescale(segment.stop - begin, rate, kSecond));
  const SoundSamples part = samples.subspan(static_cast<std::size_t>(start * kSoundChannels),
                                            static_cast<std::size_t>((stop - start) * kSoundChannels));
  return delivery.Deliver(part, begin - segment.Origin() + Rescale(start, kSecond, rate));
}

}  // namespace quorvex
