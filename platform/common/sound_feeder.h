// Feeds a pin with sound (MediaType::Pcm16, two channels), exact to the sample.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "platform/common/decoder.h"
#include "platform/common/output_pin.h"
#include "platform/common/sound_clock.h"
#include "platform/common/stream_feeder.h"

namespace quorvex {

constexpr int kSoundChannels = 2;

// The rate at which sound of `streamRate` samples per second is given out.
int DeliveredRate(int streamRate);

// The most samples in one buffer at this rate: a tenth of a second.
constexpr int SamplesPerBuffer(int rate) { return rate / 10; }

class SoundFeeder final : public StreamFeeder {
 public:
  // The pin outlives the feeder.
  SoundFeeder(OutputPin& fed, const CodedStream& stream);

  // Whether there is a decoder for the stream.
  [[nodiscard]] bool IsOpen() const { return decoder.IsOpen(); }

  void Begin(const Segment& played) override;
  Fed Feed(const AVPacket* packet) override;

 private:
  using Samples = std::span<const std::int16_t>;  // both channels

  Fed Play(const AVFrame& frame);
  bool Convert(const AVFrame& frame);
  bool PrepareResampler(const AVFrame& frame);
  Fed DeliverAll(MediaTime begin);
  Fed Deliver(Samples samples, MediaTime begin, MediaTime end);

  OutputPin& pin;
  const TickClock clock;
  const int rate;  // as delivered
  Decoder decoder;
  AvOwner<SwrContext> resampler;
  int sourceFormat = -1;  // what the resampler was made for
  int sourceRate = 0;
  int sourceChannels = 0;
  std::vector<std::int16_t> converted;
  SoundClock soundClock;
  Segment segment;
  bool first = true;
};

}  // namespace quorvex
