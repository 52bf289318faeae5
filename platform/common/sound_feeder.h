// Feeds a pin with sound (MediaType::Pcm16, two channels), exact to the sample.
#pragma once

#include "platform/common/decoder.h"
#include "platform/common/sound_clock.h"
#include "platform/common/sound_delivery.h"
#include "platform/common/stream_feeder.h"

namespace quorvex {

// The rate at which sound of `streamRate` samples per second is given out.
int DeliveredRate(int streamRate);

class SoundFeeder final : public StreamFeeder {
 public:
  // The pin outlives the feeder.
  SoundFeeder(OutputPin& fed, const CodedStream& stream);

  // Whether there is a decoder for the stream.
  [[nodiscard]] bool IsOpen() const { return decoder.IsOpen(); }

  void Begin(const Segment& played) override;
  Fed Feed(const AVPacket* packet) override;

 private:
  Fed Play(const AVFrame& frame);
  Fed DeliverPlayed(SoundSamples samples, MediaTime begin);

  const TickClock clock;
  const int rate;  // as delivered
  Decoder decoder;
  SoundConverter converter;
  SoundDelivery delivery;
  SoundClock soundClock;
  Segment segment;
};

}  // namespace quorvex
