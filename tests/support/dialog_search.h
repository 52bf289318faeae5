// Looks for a dialog of this process, from a thread beside it.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

namespace quorvex {

// A visible dialog for which `matches` (told its window and caption) answers true; null when there is none.
inline HWND FindDialog(const std::function<bool(HWND, const std::string&)>& matches) {
  struct Search {
    const std::function<bool(HWND, const std::string&)>& matches;
    HWND found = nullptr;
  } search{matches};
  const auto look = [](HWND window, LPARAM data) -> BOOL {
    auto& wanted = *reinterpret_cast<Search*>(data);
    char name[16] = "";
    char caption[200] = "";
    DWORD process = 0;
    ::GetClassNameA(window, name, sizeof name);
    ::GetWindowThreadProcessId(window, &process);
    ::GetWindowTextA(window, caption, sizeof caption);
    const bool dialog =
        std::string(name) == "#32770" && process == ::GetCurrentProcessId() && ::IsWindowVisible(window);
    if (!dialog || !wanted.matches(window, caption)) return TRUE;
    wanted.found = window;
    return FALSE;
  };
  ::EnumWindows(look, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

}  // namespace quorvex
