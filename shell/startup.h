// Start-up in its order, and the message loop.
#pragma once

#include <windows.h>

namespace quorvex {

// Prepares the platform, makes the panel, shows it. False when the window classes or the panel cannot be
// made.
bool StartUp(HINSTANCE module);

// Runs until the quit message; answers its code.
int RunMessageLoop();

}  // namespace quorvex
