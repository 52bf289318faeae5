// Uses dialogs and message boxes while they are modal: a script of them runs beside, on a thread of its own.
#pragma once

#include <gtest/gtest.h>

#include <windows.h>

#include <functional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "tests/support/dialog_search.h"

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
  static void Take(const Step& step) {
    HWND dialog = nullptr;
    const auto look = [&] {
      dialog = FindDialog([&](HWND window, const std::string& caption) {
        return caption == step.caption && ::IsWindowEnabled(window);
      });
      return dialog != nullptr;
    };
    if (!WaitUntil(look)) {
      ADD_FAILURE() << "no dialog " << step.caption;
      return;
    }
    step.use(dialog);
    EXPECT_TRUE(WaitUntil([&] { return !::IsWindow(dialog) || !::IsWindowEnabled(dialog); }))
        << step.caption << " does not close";
  }

  std::thread thread;
};

}  // namespace quorvex
