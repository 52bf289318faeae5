// The rates that an AVI file tells for its streams.
#pragma once

#include <span>

#include "platform/avi/avi_movie.h"

namespace quorvex {

// That of pictures which last so long (more than 0): a usual rate where there is one (30000/1001), else the
// time itself.
UnitRate PictureRate(MediaTime frameTime);

// How long a stream's units play at the rate that its source told, and how long they took to come.
struct StreamPace {
  MediaTime nominal = 0;
  MediaTime taken = 0;
};

// The rate of a stream that is to keep up with the master: what came in the same time then plays for the
// same time. The rate stays as it is where the two do not go apart by more than is seen or heard.
UnitRate RateBeside(UnitRate rate, const StreamPace& pace, const StreamPace& master);

}  // namespace quorvex
