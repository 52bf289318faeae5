// Uses modal dialogs and message boxes while they are open: a script of them runs beside, on a thread of its
// own.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>
#include <functional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace quorvex {

// How a thread beside it finds a dialog of this process, and waits for what becomes of it.
class Dialogs {
 public:
  // A visible dialog for which `matches` (told its window and caption) answers true; null when there is none.
  static HWND Find(const std::function<bool(HWND, const std::string&)>& matches) {
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

  static std::string TextOf(HWND window) {
    char text[1000] = "";
    ::SendMessageA(window, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
    return text;
  }
  static std::string TextOf(HWND dialog, int control) { return TextOf(::GetDlgItem(dialog, control)); }

  static bool WaitUntil(const std::function<bool()>& done, DWORD limitMs = 15000) {
    const ULONGLONG end = ::GetTickCount64() + limitMs;
    while (!done()) {
      if (::GetTickCount64() >= end) return false;
      ::Sleep(10);
    }
    return true;
  }

  static HWND WaitFor(const std::function<bool(HWND, const std::string&)>& matches) {
    HWND found = nullptr;
    WaitUntil([&] { return (found = Find(matches)) != nullptr; });
    return found;
  }
};

// One dialog.
class DialogUser : public Dialogs {
 public:
  // Runs the script as soon as a dialog is there of which `isIt` is true; cancels the dialog when the script
  // has left it open.
  DialogUser(std::function<bool(HWND)> isIt, std::function<void()> script)
      : thread([this, isIt = std::move(isIt), script = std::move(script)] { Use(isIt, script); }) {}
  DialogUser(const DialogUser&) = delete;
  DialogUser& operator=(const DialogUser&) = delete;
  ~DialogUser() {
    thread.join();
    ::KillTimer(nullptr, timer);
  }

  [[nodiscard]] HWND Dialog() const { return dialog; }

  // The texts of a list, the selected ones in brackets.
  static std::string TextsOf(HWND list) {
    std::string texts;
    for (int i = 0; i < ::SendMessageA(list, LB_GETCOUNT, 0, 0); ++i) {
      const auto item = static_cast<WPARAM>(i);
      char text[1000] = "";
      ::SendMessageA(list, LB_GETTEXT, item, reinterpret_cast<LPARAM>(text));
      const bool selected = ::SendMessageA(list, LB_GETSEL, item, 0) > 0;
      texts += (i == 0 ? "" : "|") + (selected ? '[' + std::string(text) + ']' : std::string(text));
    }
    return texts;
  }

  // Presses a key of a dialog, and waits until the dialog is gone.
  static void Leave(HWND window, int id) {
    ::PostMessageA(window, WM_COMMAND, static_cast<WPARAM>(id), 0);
    EXPECT_TRUE(WaitUntil([&] { return !::IsWindow(window); }));
  }

  // The same for one that another dialog has opened.
  static void Close(HWND window, int id) {
    Leave(window, id);
    Settle();
  }

  // Waits for a message box, closes it and answers what it said.
  static std::string AnswerBox(HWND expectedOwner, const std::string& caption = "Quorvex") {
    const HWND box = WaitForWindow(caption);
    EXPECT_EQ(::GetWindow(box, GW_OWNER), expectedOwner);
    const std::string text = TextOf(::GetDlgItem(box, 0xFFFF));
    Close(box, IDOK);
    return text;
  }

  static HWND WaitForWindow(const std::string& caption) {
    const HWND found = WaitFor([&](HWND, const std::string& name) { return name == caption; });
    EXPECT_NE(found, nullptr) << "no dialog " << caption;
    return found;
  }

  // Waits until the dialog's thread has nothing else to do: timers come last.
  static void Settle() {
    const int before = ticks;
    EXPECT_TRUE(WaitUntil([&] { return ticks >= before + 2; }));
  }

  static std::string CaptionOf(HWND window) {
    char caption[200] = "";
    ::GetWindowTextA(window, caption, sizeof caption);
    return caption;
  }

 private:
  static void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD) { ++ticks; }

  void Use(const std::function<bool(HWND)>& isIt, const std::function<void()>& script) {
    dialog = WaitFor([&](HWND window, const std::string&) { return isIt(window); });
    ASSERT_NE(dialog, nullptr) << "the dialog does not come";
    Settle();
    script();
    // Whatever a failed script has left open stands before the dialog.
    WaitUntil([this] {
      if (::IsWindow(dialog)) ::PostMessageA(::GetLastActivePopup(dialog), WM_COMMAND, IDCANCEL, 0);
      return !::IsWindow(dialog);
    });
  }

  static inline std::atomic<int> ticks = 0;

  UINT_PTR timer = ::SetTimer(nullptr, 0, 10, Tick);
  HWND dialog = nullptr;
  std::thread thread;
};

// Several, one after the other.
class DialogScript : public Dialogs {
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
              TypeName(dialog, name);
              ::PostMessageA(dialog, WM_COMMAND, IDOK, 0);
            }};
  }
  // Until it stays: the dialog may still be filling its fields.
  static void TypeName(HWND dialog, const std::string& name) {
    constexpr int kNameField = 0x47C;
    EXPECT_TRUE(WaitUntil([&] {
      ::SetDlgItemTextA(dialog, kNameField, name.c_str());
      ::Sleep(50);
      return TextOf(dialog, kNameField) == name;
    }));
  }

 private:
  static void Take(const Step& step) {
    const HWND dialog = WaitFor([&](HWND window, const std::string& caption) {
      return caption == step.caption && ::IsWindowEnabled(window);
    });
    if (dialog == nullptr) {
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
