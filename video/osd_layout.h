// How the on-screen display lies on a picture: texts and level bars. Pixels from the picture's top-left
// corner; the divisions truncate.
#pragma once

#include <string_view>
#include <vector>

#include "base/geometry.h"
#include "video/adjustment_info.h"

namespace quorvex {

// The longest text that is shown.
inline constexpr std::size_t kLongestOsdText = 19;

// A text's character height: a number is written larger than a word.
int OsdTextHeight(std::string_view text, int areaHeight);

// Where a text of a size goes, its font's "M" as large as `letter`: at the top right.
Rect PlaceOsdText(Size area, Size letter, Size text);

// A segment of a level bar, as it is when it is reached by the level and when it is not.
struct OsdSegmentPlace {
  Rect large;
  Rect small;
};

struct OsdLevelPlaces {
  std::vector<OsdSegmentPlace> segments;
  int barTop = 0;
  int barHeight = 0;
  int titleHeight = 0;  // the title's character height
};
OsdLevelPlaces PlaceOsdLevel(Size area, int segmentCount);

// Where a title of a size goes: centred above the bar.
Rect PlaceOsdTitle(Size area, const OsdLevelPlaces& bar, Size title);

// Whether a segment is large at a level (the number of segments that are reached).
bool IsOsdSegmentLarge(int index, int level, int segmentCount, int barMode);

// The number of segments that an adjustment's value reaches. One whose step is 0 (its range has fewer values
// than the bar has segments) goes from none at its minimum to all at its maximum.
int OsdLevelOf(const AdjustmentInfo& adjustment, int segmentCount);

}  // namespace quorvex
