// The control panel for screen readers: its buttons with name, shortcut and state, its display as text.
#pragma once

#include <windows.h>

namespace quorvex {

// Lets every button answer for itself; once, after they are made.
void InstallButtonAccessibility();

// The panel's reply to WM_GETOBJECT; 0 when another object than its client area is asked for. Its first child
// is the display, the buttons follow.
LRESULT PanelObject(WPARAM wParam, LPARAM lParam);

}  // namespace quorvex
