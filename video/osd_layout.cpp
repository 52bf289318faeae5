#include "video/osd_layout.h"

#include <algorithm>
#include <cstdint>

#include "base/text.h"

namespace quorvex {
namespace {

Rect Box(int x, int y, Size size) { return {x, y, x + size.width, y + size.height}; }

}  // namespace

int OsdTextHeight(std::string_view text, int areaHeight) {
  return LeadingNumber(text) != 0 ? areaHeight / 8 : areaHeight / 10;
}

Rect PlaceOsdText(Size area, Size letter, Size text) {
  return Box(area.width - letter.width - text.width, letter.height / 3, text);
}

OsdLevelPlaces PlaceOsdLevel(Size area, int segmentCount) {
  const int cell = area.width / (segmentCount + 8);
  const int half = (cell + 1) / 2;
  const int small = std::max(half / 2, 1);
  OsdLevelPlaces places;
  places.barHeight = 3 * half;
  places.barTop = area.height - 6 * half;
  places.titleHeight = area.height / 16;
  for (int i = 0; i < segmentCount; ++i) {
    const int x = (5 + i) * cell;
    places.segments.push_back({Box(x, places.barTop, {half, places.barHeight}),
                               Box(x + (half - small) / 2, places.barTop + (places.barHeight - 3 * small) / 2,
                                   {small, 3 * small})});
  }
  return places;
}

Rect PlaceOsdTitle(Size area, const OsdLevelPlaces& bar, Size title) {
  return Box((area.width - title.width) / 2, bar.barTop - bar.barHeight / 2 - bar.titleHeight, title);
}

bool IsOsdSegmentLarge(int index, int level, int segmentCount, int barMode) {
  if (barMode == 0 && index == segmentCount / 2) return true;
  return index == level - 1 || (index < level - 1 && barMode == 1);
}

int OsdLevelOf(const AdjustmentInfo& adjustment, int segmentCount) {
  if (adjustment.step != 0) {
    const std::int64_t step = adjustment.step;
    return static_cast<int>((adjustment.value + step - 1) / step);
  }
  const std::int64_t range = std::int64_t{adjustment.maximum} - adjustment.minimum;
  const std::int64_t above = std::int64_t{adjustment.value} - adjustment.minimum;
  if (range <= 0 || above <= 0) return 0;
  return static_cast<int>(std::min(above, range) * segmentCount / range);
}

}  // namespace quorvex
