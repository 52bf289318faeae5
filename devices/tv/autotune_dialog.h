// The question before all channels are searched.
#pragma once

#include <windows.h>

namespace quorvex {

// Shows the dialog, centred over its owner, until it is closed; answers whether it was OK.
bool ConfirmAutotune(HWND owner);

}  // namespace quorvex
