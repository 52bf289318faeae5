// Feeds an output pin with what a stream's packets decode to. Times of samples count from the segment's
// origin.
#pragma once

#include "platform/common/av.h"
#include "platform/common/media_time.h"

namespace quorvex {

enum class Fed {
  kMore,     // the next packet is wanted
  kOver,     // the segment's end is reached
  kRefused,  // the other end takes nothing more: it flushes or stops
};

class StreamFeeder {
 public:
  StreamFeeder() = default;
  StreamFeeder(const StreamFeeder&) = delete;
  StreamFeeder& operator=(const StreamFeeder&) = delete;
  virtual ~StreamFeeder() = default;

  // The next packet belongs to another place: forgets what was before, and plays `played` from now on.
  virtual void Begin(const Segment& played) = 0;

  // Decodes a packet and delivers what comes out; null at the stream's end. Waits as long as the other end
  // does.
  virtual Fed Feed(const AVPacket* packet) = 0;

  // The file has nothing for the stream for long: delivers what a renderer needs that waits for something.
  virtual Fed FillIn() = 0;
};

}  // namespace quorvex
