// When a live source's next frame is due, and how many were lost because it came too late.
#pragma once

#include "platform/common/media_time.h"

namespace quorvex {

class FramePacer {
 public:
  struct Frame {
    std::int64_t number = 0;  // counts the lost ones too
    MediaTime begin = 0;
    MediaTime end = 0;
    std::int64_t lost = 0;  // since the frame before
  };

  // The time at which the next frame is due.
  [[nodiscard]] MediaTime Due() const { return due; }

  // The frame that is on at this time, which is not before Due.
  Frame Take(MediaTime now, MediaTime frameTime) {
    const std::int64_t lost = now > due ? (now - due) / frameTime : 0;
    const MediaTime begin = due + lost * frameTime;
    const Frame frame{next + lost, begin, begin + frameTime, lost};
    next = frame.number + 1;
    due = frame.end;
    return frame;
  }

 private:
  MediaTime due = 0;
  std::int64_t next = 0;
};

}  // namespace quorvex
