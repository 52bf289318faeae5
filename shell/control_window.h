// The control panel's window procedure: which room answers which message.
#pragma once

#include <windows.h>

namespace quorvex {

LRESULT CALLBACK ControlWindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

}  // namespace quorvex
