#include "platform/common/timed_pictures.h"

namespace quorvex {

TimedPictures::TimedPictures(const CodedStream& stream, MediaTime frameTime)
    : clock(stream.clock), usualTime(frameTime > 0 ? frameTime : kSecond / 25), decoder(stream) {}

void TimedPictures::Begin(MediaTime from) {
  next = from;
  decoder.Flush();
}

MediaTime TimedPictures::BeginOf(const AVFrame& frame) const {
  return frame.best_effort_timestamp != AV_NOPTS_VALUE ? clock.Time(frame.best_effort_timestamp) : next;
}

MediaTime TimedPictures::LengthOf(const AVFrame& frame) const {
  return frame.pkt_duration > 0 ? clock.Length(frame.pkt_duration) : usualTime;
}

}  // namespace quorvex
