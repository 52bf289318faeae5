// Where a window is, also one that is minimised.
#pragma once

#include <windows.h>

namespace quorvex {

// A window's rectangle on the screen; that of a minimised one, which the platform keeps far off the screen,
// is where it comes back to.
RECT PlaceOf(HWND window);

}  // namespace quorvex
