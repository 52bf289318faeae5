// Uses dialogs and message boxes while they are modal: a script of them runs beside, on a thread of its own.
#pragma once

#include <gtest/gtest.h>

#include <windows.h>

#include <functional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace quorvex {

class DialogScript {
 public:
  // A dialog that must come, by its caption, and what is done in it. It must be gone before the next one
  // comes.
  struct Step {
    std::string caption;
    std::function<void(HWND)> use;
  };

  explicit DialogScript(std::vector<Step> steps)
      : thread([this, script = std::move(steps)] {
          for (const Step& step : script) Take(step);
        }) {}
  DialogScript(const DialogScript&) = delete;
  DialogScript& operator=(const DialogScript&) = delete;
  ~DialogScript() { thread.join(); }

  // A message box with this text.
  static Step Box(const std::string& text) {
    return {"Quorvex", [text](HWND box) {
              EXPECT_EQ(TextOf(box, 0xFFFF), text);
              ::PostMessageA(box, WM_COMMAND, IDOK, 0);
            }};
  }
  // A dialog of which one button is pressed.
  static Step Press(const std::string& caption, int button) {
    return {caption,
            [button](HWND dialog) { ::PostMessageA(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0); }};
  }
  // The platform's dialog for a file: its name is typed.
  static Step Name(const std::string& caption, const std::string& name) {
    return {caption, [name](HWND dialog) {
              constexpr int kNameField = 0x47C;
              EXPECT_TRUE(WaitUntil([&] { return ::GetDlgItem(dialog, kNameField) != nullptr; }));
              ::SetDlgItemTextA(dialog, kNameField, name.c_str());
              ::PostMessageA(dialog, WM_COMMAND, IDOK, 0);
            }};
  }

  static std::string TextOf(HWND dialog, int control) {
    char text[1000] = "";
    ::SendMessageA(::GetDlgItem(dialog, control), WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
    return text;
  }

  static bool WaitUntil(const std::function<bool()>& done, DWORD limitMs = 15000) {
    const ULONGLONG end = ::GetTickCount64() + limitMs;
    while (!done()) {
      if (::GetTickCount64() >= end) return false;
      ::Sleep(10);
    }
    return true;
  }

 private:
  struct Search {
    const std::string& caption;
    HWND found = nullptr;
  };

  static BOOL CALLBACK Match(HWND window, LPARAM wanted) {
    auto& search = *reinterpret_cast<Search*>(wanted);
    char name[16] = "";
    char caption[200] = "";
    DWORD process = 0;
    ::GetClassNameA(window, name, sizeof name);
    ::GetWindowThreadProcessId(window, &process);
    ::GetWindowTextA(window, caption, sizeof caption);
    const bool dialog = name == std::string("#32770") && process == ::GetCurrentProcessId() &&
                        ::IsWindowVisible(window) && ::IsWindowEnabled(window);
    if (!dialog || caption != search.caption) return TRUE;
    search.found = window;
    return FALSE;
  }

  static void Take(const Step& step) {
    Search search{step.caption};
    const auto look = [&] {
      ::EnumWindows(Match, reinterpret_cast<LPARAM>(&search));
      return search.found != nullptr;
    };
    if (!WaitUntil(look)) {
      ADD_FAILURE() << "no dialog " << step.caption;
      return;
    }
    step.use(search.found);
    EXPECT_TRUE(WaitUntil([&] { return !::IsWindow(search.found) || !::IsWindowEnabled(search.found); }))
        << step.caption << " does not close";
  }

  std::thread thread;
};

}  // namespace quorvex
