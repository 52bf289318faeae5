// Which pictures are left out so that the rest come in time: a machine that is too slow shows fewer pictures
// instead of falling behind the sound.
#pragma once

#include "platform/common/media_time.h"

namespace quorvex {

class LatePictures {
 public:
  // `lateness`: how long the time of the next picture is past (negative: still to come). Whether it is to be
  // left out. One in eight is shown however late, so that something moves.
  bool LeaveOut(MediaTime lateness) {
    farBehind = lateness > (farBehind ? kCaughtUp : kFarBehind);
    if (lateness <= kTolerated || inARow == kMostInARow) {
      inARow = 0;
      return false;
    }
    ++inARow;
    return true;
  }

  // Whether pictures that no other picture refers to should not even be decoded.
  [[nodiscard]] bool IsFarBehind() const { return farBehind; }

 private:
  static constexpr MediaTime kTolerated = 60 * kMillisecond;
  static constexpr MediaTime kFarBehind = 300 * kMillisecond;
  static constexpr MediaTime kCaughtUp = 40 * kMillisecond;
  static constexpr int kMostInARow = 7;

  int inARow = 0;
  bool farBehind = false;
};

}  // namespace quorvex
