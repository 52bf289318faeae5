// The adjustment (of the sound or of the picture) that the arrow keys work on while its level bar is shown.
#pragma once

#include <cstdint>
#include <string>

namespace quorvex {

struct AdjustmentInfo {
  std::int32_t property = 0;  // of the picture: IAMVideoProcAmp's number
  std::int32_t adjustId = 0;  // 0 to 3 the picture's attributes, 4 to 7 volume, balance, bass, treble
  std::int32_t barMode = 0;   // 1 a filled bar, 0 a bar with a mark at its centre, else a single marker
  std::string title;          // above the bar; at most 19 characters are shown
  std::int32_t minimum = 0;
  std::int32_t maximum = 0;
  std::int32_t steppingDelta = 0;  // this and the next two as the picture's driver gives them
  std::int32_t defaultValue = 0;
  std::int32_t capsFlags = 0;
  std::int32_t step = 0;  // of the value for one segment of the bar
  std::int32_t value = 0;
};

// The one that is being adjusted.
extern AdjustmentInfo adjustmentInfo;

}  // namespace quorvex
