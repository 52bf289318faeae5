// Message boxes that are answered at once: what they said is noted, and while one is open its message loop
// lets everything in.
#pragma once

#include <windows.h>

#include <string>
#include <utility>
#include <vector>

#include "devices/device.h"
#include "panel/main_window.h"
#include "shell/lifecycle.h"
#include "tests/support/import_hook.h"

extern "C" decltype(&::MessageBoxA) __imp_MessageBoxA;

namespace quorvex {

// What may reach the panel at the worst moment, when something has a message loop of its own.
inline void LetMessagesIn() {
  for (const UINT_PTR timer : {kDeviceTimer, kClockTimer}) ::SendMessageA(mainWindow, WM_TIMER, timer, 0);
  ::SendMessageA(mainWindow, kGraphMessage, 0, 0);
}

class NotedBoxes {
 public:
  NotedBoxes() { current = this; }
  NotedBoxes(const NotedBoxes&) = delete;
  NotedBoxes& operator=(const NotedBoxes&) = delete;
  ~NotedBoxes() { current = nullptr; }

  // "caption: text" of every box since the last time.
  std::vector<std::string> Take() { return std::exchange(told, {}); }

 private:
  static int WINAPI Show(HWND, LPCSTR text, LPCSTR caption, UINT) {
    current->told.push_back(std::string(caption) + ": " + text);
    LetMessagesIn();
    return IDOK;
  }

  static inline NotedBoxes* current = nullptr;

  std::vector<std::string> told;
  ImportHook<decltype(&::MessageBoxA)> hook{__imp_MessageBoxA, Show};
};

}  // namespace quorvex
