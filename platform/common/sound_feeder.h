// Feeds a pin with sound (MediaType::Pcm16, two channels), exact to the sample.
#pragma once

#include "platform/common/sound_delivery.h"
#include "platform/common/stream_feeder.h"
#include "platform/common/timed_sound.h"

namespace quorvex {

// The rate at which sound of `streamRate` samples per second is given out.
int DeliveredRate(int streamRate);

class SoundFeeder final : public StreamFeeder {
 public:
  // The pin outlives the feeder.
  SoundFeeder(OutputPin& fed, const CodedStream& stream);

  // Whether there is a decoder for the stream.
  [[nodiscard]] bool IsOpen() const { return sound.IsOpen(); }

  void Begin(const Segment& played) override;
  Fed Feed(const AVPacket* packet) override;
  Fed FillIn() override;

 private:
  Fed DeliverPlayed(SoundSamples samples, MediaTime begin);

  const int rate;  // as delivered
  TimedSound sound;
  SoundDelivery delivery;
  Segment segment;
};

}  // namespace quorvex
