// The other side of the messages of remote_protocol.h: what a program sends that works the running remote
// control.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>

#include "remote/remote_protocol.h"

namespace quorvex {

// The running panel; null when there is none.
HWND FindPanel();

// What the panel answers to a message of this kind; nothing when it does not within ten seconds.
std::optional<RemoteAnswer> Ask(HWND panel, ULONG_PTR kind, std::string_view bytes);

// What the last kRemoteAskState has brought.
const std::string& StateTold();

// Presses a key by its command number.
std::optional<RemoteAnswer> PressKey(HWND panel, int command);

// Waits until the panel has acted on what was pressed, or has ended by it: what is asked next is then true.
void AwaitAction(HWND panel);

}  // namespace quorvex
