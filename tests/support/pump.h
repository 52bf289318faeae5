// Lets windows live while a test waits: messages are dispatched until something has come about.
#pragma once

#include <windows.h>

#include <functional>

namespace quorvex {

// Dispatches messages until `done` answers true; false when it does not within the limit.
inline bool PumpUntil(const std::function<bool()>& done, DWORD limitMs = 5000) {
  const ULONGLONG end = ::GetTickCount64() + limitMs;
  while (!done()) {
    if (::GetTickCount64() >= end) return false;
    MSG message{};
    while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
      ::DispatchMessageA(&message);
      // Timers come last, and one that takes longer than its period is always due.
      if (message.message == WM_TIMER) break;
    }
    ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
  }
  return true;
}

// Dispatches messages for a time.
inline void PumpFor(DWORD milliseconds) {
  const ULONGLONG end = ::GetTickCount64() + milliseconds;
  PumpUntil([end] { return ::GetTickCount64() >= end; }, milliseconds + 1000);
}

}  // namespace quorvex
