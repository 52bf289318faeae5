// Delivers sound (MediaType::Pcm16, two channels) to what a pin is connected to.
#pragma once

#include "platform/common/output_pin.h"
#include "platform/common/sound_converter.h"
#include "platform/common/stream_feeder.h"

namespace quorvex {

// The most samples in one buffer at this rate: a tenth of a second.
constexpr int SamplesPerBuffer(int rate) { return rate / 10; }

class SoundDelivery {
 public:
  // The pin outlives the delivery.
  SoundDelivery(OutputPin& fed, int samplesPerSecond) : pin(fed), rate(samplesPerSecond) {}

  // What follows begins at another place.
  void Begin() { first = true; }

  // Delivers samples, the first of which sounds at `begin` of the stream's time, in as many buffers as they
  // take.
  Fed Deliver(SoundSamples samples, MediaTime begin);

 private:
  Fed Send(SoundSamples samples, MediaTime begin, MediaTime end);

  OutputPin& pin;
  const int rate;
  bool first = true;
};

}  // namespace quorvex
