// Decodes the pictures of a stream and tells when each of them is on.
#pragma once

#include "platform/common/decoder.h"

namespace quorvex {

class TimedPictures {
 public:
  // `frameTime`: how long a picture lasts when the stream does not say (0: nobody knows).
  TimedPictures(const CodedStream& stream, MediaTime frameTime);

  // Whether there is a decoder for the stream.
  [[nodiscard]] bool IsOpen() const { return decoder.IsOpen(); }

  // What follows begins at another place: a picture that does not say when it is on is on from then.
  void Begin(MediaTime from);

  // Lets the decoder leave out pictures that no other picture refers to.
  void SkipUnreferenced(bool skip) { decoder.SkipUnreferenced(skip); }

  // When the picture after the last one begins, if it does not say so itself.
  [[nodiscard]] MediaTime Next() const { return next; }

  // Decodes a packet (null: the stream is over) and calls take(const AVFrame&, begin, end) for every picture
  // that comes out; times are the stream's. False as soon as take answers false.
  template <typename Take>
  bool Decode(const AVPacket* packet, Take take) {
    return decoder.Decode(packet, [&](const AVFrame& frame) {
      const MediaTime begin = BeginOf(frame);
      next = begin + LengthOf(frame);
      return take(frame, begin, next);
    });
  }

 private:
  [[nodiscard]] MediaTime BeginOf(const AVFrame& frame) const;
  [[nodiscard]] MediaTime LengthOf(const AVFrame& frame) const;

  const TickClock clock;
  const MediaTime usualTime;
  Decoder decoder;
  MediaTime next = 0;
};

}  // namespace quorvex
