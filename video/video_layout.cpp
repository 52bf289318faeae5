#include "video/video_layout.h"

#include <algorithm>
#include <cstdint>

#include "panel/scale.h"

namespace quorvex {
namespace {

constexpr Margins kMargins{15, 12, 15, 12};  // in units, as the next
constexpr int kAbovePanel = 4;

int Across() { return ToPixels(kMargins.left + kMargins.right); }
int Down() { return ToPixels(kMargins.top + kMargins.bottom); }

int Scaled(int length, int numerator, int denominator) {
  return static_cast<int>(std::int64_t{length} * numerator / denominator);
}

}  // namespace

Margins FrameMargins() {
  return {ToPixels(kMargins.left), ToPixels(kMargins.top), ToPixels(kMargins.right),
          ToPixels(kMargins.bottom)};
}

Size FrameSize(Size picture) { return {picture.width + Across(), picture.height + Down()}; }

Size FirstPicture(Size video, Size screen) {
  const Size scaled{ToPixels(video.width), ToPixels(video.height)};
  const Size frame = FrameSize(scaled);
  return frame.width <= screen.width && frame.height <= screen.height ? scaled : video;
}

Rect PictureInFrame(Size frame) {
  const Margins margins = FrameMargins();
  return {margins.left, margins.top, frame.width - margins.right, frame.height - margins.bottom};
}

Point PlaceFrame(const Rect& panel, Size frame) {
  const int spare = panel.Width() - frame.width;
  const int x = spare >= 0 ? panel.left + spare / 2 : panel.left - -spare / 2;
  return {x, std::max(panel.top - frame.height - ToPixels(kAbovePanel), 0)};
}

Rect LetterBox(Size video, Size area) {
  const bool tall = std::int64_t{area.width} * video.height < std::int64_t{area.height} * video.width;
  if (tall) {
    const int height = Scaled(area.width, video.height, video.width);
    const int top = Half(area.height - height);
    return {0, top, area.width, top + height};
  }
  const int width = Scaled(area.height, video.width, video.height);
  const int left = Half(area.width - width);
  return {left, 0, left + width, area.height};
}

Rect ConstrainSizing(int edge, Rect frame, Size video) {
  const int height = Scaled(frame.Width() - Across(), video.height, video.width) + Down();
  switch (edge) {
    case 1:  // left
    case 2:  // right
    case 7:  // bottom left
    case 8:  // bottom right
      frame.bottom = frame.top + height;
      break;
    case 3:  // top
    case 6:  // bottom
      frame.right = frame.left + Scaled(frame.Height() - Down(), video.width, video.height) + Across();
      break;
    case 4:  // top left
    case 5:  // top right
      frame.top = frame.bottom - height;
      break;
    default: break;
  }
  return frame;
}

HitZones BuildHitZones(Size frame) {
  const Rect picture = PictureInFrame(frame);
  const int w = frame.width;
  const int h = frame.height;
  return {{{2, picture},                                 // caption
           {13, {0, 0, picture.left, picture.top}},      // top left
           {14, {picture.right, 0, w, picture.top}},     // top right
           {16, {0, picture.bottom, picture.left, h}},   // bottom left
           {17, {picture.right, picture.bottom, w, h}},  // bottom right
           {10, {0, picture.top, picture.left, picture.bottom}},
           {12, {picture.left, 0, picture.right, picture.top}},
           {11, {picture.right, picture.top, w, picture.bottom}},
           {15, {picture.left, picture.bottom, picture.right, h}}}};
}

int CodeAt(const HitZones& zones, Point point) {
  const auto* found = std::find_if(zones.begin() + 1, zones.end(),
                                   [point](const HitZone& zone) { return zone.zone.Contains(point); });
  return found == zones.end() ? 0 : found->code;
}

}  // namespace quorvex
