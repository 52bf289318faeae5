// Decodes the sound of a stream, 16 bits, two channels, and tells when each block of it sounds.
#pragma once

#include <optional>

#include "platform/common/decoder.h"
#include "platform/common/sound_clock.h"
#include "platform/common/sound_converter.h"

namespace quorvex {

class TimedSound {
 public:
  TimedSound(const CodedStream& stream, int samplesPerSecond)
      : clock(stream.clock), decoder(stream), converter(samplesPerSecond), soundClock(samplesPerSecond) {}

  // Whether there is a decoder for the stream.
  [[nodiscard]] bool IsOpen() const { return decoder.IsOpen(); }

  // What follows begins at another place.
  void Begin() {
    soundClock.Restart();
    converter.Reset();
    decoder.Flush();
  }

  // Decodes a packet (null: the stream is over) and calls take(SoundSamples, begin) for every block that
  // comes out; times are the stream's. False as soon as take answers false.
  template <typename Take>
  bool Decode(const AVPacket* packet, Take take) {
    return decoder.Decode(packet, [&](const AVFrame& frame) {
      std::optional<MediaTime> stamped;
      if (frame.best_effort_timestamp != AV_NOPTS_VALUE) stamped = clock.Time(frame.best_effort_timestamp);
      const MediaTime begin = soundClock.Begin(stamped);
      const SoundSamples samples = converter.Convert(frame);
      soundClock.Advance(static_cast<std::int64_t>(samples.size() / kSoundChannels));
      return take(samples, begin);
    });
  }

 private:
  const TickClock clock;
  Decoder decoder;
  SoundConverter converter;
  SoundClock soundClock;
};

}  // namespace quorvex
