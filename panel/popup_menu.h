// Pop-up menus at the panel's keys.
#pragma once

#include <windows.h>

namespace quorvex {

// Shows a menu with its top-left corner at that of a command's button; the choice comes to the control panel
// as a command.
void ShowAtButton(HMENU menu, int command);

}  // namespace quorvex
