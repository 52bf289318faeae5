// What other programs of the same user may ask of the running panel (remote/remote_protocol.h).
#pragma once

#include <windows.h>

namespace quorvex {

// Answers a WM_COPYDATA message; `sender` is the window that it says it comes from.
LRESULT OnCopyData(HWND sender, const COPYDATASTRUCT& data);

// Keys of other programs wait until the start sequence is over, whose end would write over what they show.
void HoldKeys(bool hold);

// Presses a key that another program has asked for; posted, as a click of the mouse is.
inline constexpr UINT kRemoteKeyMessage = WM_APP + 3;
void OnRemoteKey(int command);

}  // namespace quorvex
