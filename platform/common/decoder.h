// Decodes the packets of one stream. Damage in a stream is passed over: what cannot be decoded is missing.
#pragma once

#include "platform/common/av.h"

namespace quorvex {

class Decoder {
 public:
  // Opens the decoder; IsOpen tells whether there is one for this stream.
  explicit Decoder(const CodedStream& stream);

  [[nodiscard]] bool IsOpen() const { return codec != nullptr; }

  // Forgets what was decoded: what follows begins at another place.
  void Flush();

  // Lets the decoder leave out pictures that no other picture refers to.
  void SkipUnreferenced(bool skip);

  // Decodes `packet` (null: the stream is over, give out what is left) and calls take(AVFrame&) for every
  // frame that comes out. False as soon as take answers false.
  template <typename Take>
  bool Decode(const AVPacket* packet, Take take) {
    bool taken = true;
    while (taken) {
      const bool refused = !Send(packet);
      taken = false;
      while (Receive()) {
        if (!take(*frame)) return false;
        taken = refused;  // there is room for the packet now
      }
    }
    return true;
  }

 private:
  // False when the decoder wants its frames taken before it accepts the packet.
  bool Send(const AVPacket* packet);
  // False when no frame is ready.
  bool Receive();

  AvOwner<AVCodecContext> codec;
  AvOwner<AVFrame> frame;
};

}  // namespace quorvex
