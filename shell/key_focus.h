// The keyboard's way to the keys of the panel, for those that have no shortcut too.
#pragma once

#include <windows.h>

namespace quorvex {

// Tab goes to the next key and Shift+Tab to the one before, with Ctrl to the next group or the one before;
// the space bar presses the key. Which one has the keyboard is shown by a frame until the mouse is used;
// while it is not, the first of these only shows it, so that nobody presses what he does not see. `message`:
// any message of the panel's thread. True when nobody else needs it.
bool MoveKeyFocus(const MSG& message);

}  // namespace quorvex
