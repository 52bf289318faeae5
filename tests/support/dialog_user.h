// Uses a modal dialog: a script runs beside it, on a thread of its own.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>
#include <functional>
#include <string>
#include <thread>

#include "tests/support/dialog_search.h"

namespace quorvex {

class DialogUser {
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

  static std::string TextOf(HWND window) {
    char text[1000] = "";
    ::SendMessageA(window, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
    return text;
  }

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
    const HWND found = WaitForDialog([&](HWND window) { return CaptionOf(window) == caption; });
    EXPECT_NE(found, nullptr) << "no dialog " << caption;
    return found;
  }

  static bool WaitUntil(const std::function<bool()>& done, DWORD limitMs = 5000) {
    const ULONGLONG end = ::GetTickCount64() + limitMs;
    while (!done()) {
      if (::GetTickCount64() >= end) return false;
      ::Sleep(10);
    }
    return true;
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

  static HWND WaitForDialog(const std::function<bool(HWND)>& isIt) {
    HWND found = nullptr;
    WaitUntil(
        [&] {
          found = FindDialog([&](HWND window, const std::string&) { return isIt(window); });
          return found != nullptr;
        },
        15000);
    return found;
  }

  void Use(const std::function<bool(HWND)>& isIt, const std::function<void()>& script) {
    dialog = WaitForDialog(isIt);
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

}  // namespace quorvex
