// The colours of what the program draws itself, as they are shown: other ones on a device with a palette, and
// while the user has high contrast on.
#pragma once

#include <windows.h>

#include "panel/display_elements.h"

namespace quorvex {

// Finds out what the device of `dc` is, and whether high contrast is switched on.
void PrepareColours(HDC dc);

// Whether the user has high contrast switched on.
bool ReadHighContrast();

// Shows the panel in the colours of high contrast, or in its own again.
void ShowHighContrast(bool on);
bool IsHighContrastShown();

// What is drawn for one of the colours of display_elements.h.
COLORREF ShownColour(Colour colour);

}  // namespace quorvex
