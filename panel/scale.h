// How large everything of our own is drawn. The tables of keys, display and frame count in units: pixels of a
// display of the usual density (96 dots an inch). On one of twice that and more a unit is two pixels, and the
// artwork is a second set, drawn in that size.
#pragma once

#include "base/geometry.h"

namespace quorvex {

// The scale for a display of so many dots an inch. `wanted` (1 or 2) goes before it; any other value leaves
// the choice to the display.
int ScaleFor(int wanted, int dotsPerInch);

// The pixels of a unit in this run, 1 or 2. It is set once, before the first window is made.
int Scale();
void SetScale(int pixels);

int ToPixels(int units);
Rect ToPixels(const Rect& units);

}  // namespace quorvex
