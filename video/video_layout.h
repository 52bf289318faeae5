// Where the video window's frame and the picture in it lie. Everything is in pixels at the run's scale
// (panel/scale.h); the divisions truncate.
#pragma once

#include <array>

#include "base/geometry.h"

namespace quorvex {

// The widths of the frame's border, as its skin draws it.
struct Margins {
  int left;
  int top;
  int right;
  int bottom;
};
Margins FrameMargins();

// The picture that a video's frame opens with: as large as at a scale of 1, but in the video's own size where
// the frame around that would be larger than the screen.
Size FirstPicture(Size video, Size screen);

// The frame around a picture of a size.
Size FrameSize(Size picture);

// The picture inside a frame.
Rect PictureInFrame(Size frame);

// The frame's top-left corner: centred over the panel and a little above it, but not above the screen.
Point PlaceFrame(const Rect& panel, Size frame);

// The largest picture of a video's shape within an area, centred. Neither side of the video may be 0.
Rect LetterBox(Size video, Size area);

// What a frame that the user drags by `edge` (the platform's WMSZ number) becomes, so that its picture keeps
// the video's shape.
Rect ConstrainSizing(int edge, Rect frame, Size video);

// An area of the frame, and the platform's hit-test code that it answers.
struct HitZone {
  int code;
  Rect zone;
};
using HitZones = std::array<HitZone, 9>;
HitZones BuildHitZones(Size frame);

// The code of the border's zone that contains a point of the frame; 0 elsewhere. The picture (zone 0) answers
// for itself.
int CodeAt(const HitZones& zones, Point point);

}  // namespace quorvex
