// How another program of the same user works the running remote control: WM_COPYDATA messages to its window
// (class PControl). The sender passes a window of its own as the message's first parameter.
#pragma once

#include <windows.h>

namespace quorvex {

// The kinds of message (COPYDATASTRUCT's dwData) and what each carries.
inline constexpr ULONG_PTR kRemoteOpenFiles =
    0x51560001;  // full paths in UTF-8, each ended by a zero, in play order
inline constexpr ULONG_PTR kRemotePressKey = 0x51560002;  // a command number of 32 bits
inline constexpr ULONG_PTR kRemoteAskState = 0x51560003;  // nothing
inline constexpr ULONG_PTR kRemoteState =
    0x51560004;  // the answer to the sender's window: name=value lines in UTF-8
inline constexpr ULONG_PTR kRemoteAskReady =
    0x51560005;  // nothing: whether the keys pressed so far have been acted on (kDone), or not yet (kBusy)

// What the message answers.
enum class RemoteAnswer : LRESULT {
  kRefused = 0,  // the sender, or what it sent, is not in order
  kDone = 1,
  kBusy = 2,  // a dialog or message box waits for the user
};

inline constexpr DWORD kLargestRemoteMessage = 4 << 20;

}  // namespace quorvex
