// Uses the Open File dialog while it is modal: a script runs beside it, on a thread of its own.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <shlobj.h>

#include <atomic>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "resources/ids.h"
#include "tests/support/dialog_search.h"

namespace quorvex {

class FileDialogUser {
 public:
  using Script = std::function<void(FileDialogUser&)>;

  // Runs the script as soon as the dialog is there; cancels the dialog when the script has left it open.
  explicit FileDialogUser(Script script) : thread([this, script = std::move(script)] { Use(script); }) {}
  FileDialogUser(const FileDialogUser&) = delete;
  FileDialogUser& operator=(const FileDialogUser&) = delete;
  ~FileDialogUser() {
    thread.join();
    ::KillTimer(nullptr, timer);
  }

  [[nodiscard]] HWND Dialog() const { return dialog; }
  [[nodiscard]] HWND Control(int id) const { return ::GetDlgItem(panel, id); }

  void Press(int id) const { ::SendMessageA(Control(id), BM_CLICK, 0, 0); }

  // Presses a key that opens a dialog or a box, and waits for that.
  [[nodiscard]] HWND PressFor(int id, const std::string& caption) const {
    ::PostMessageA(Control(id), BM_CLICK, 0, 0);
    return WaitForWindow(caption);
  }

  void SelectAlbum(int place) const {
    ::SendMessageA(Control(IDC_ALBUM_LIST), LB_SETCURSEL, static_cast<WPARAM>(place), 0);
    ::SendMessageA(panel, WM_COMMAND, MAKEWPARAM(IDC_ALBUM_LIST, LBN_SELCHANGE),
                   reinterpret_cast<LPARAM>(Control(IDC_ALBUM_LIST)));
  }

  // The texts of a list, the selected one in brackets.
  [[nodiscard]] std::string List(int id) const {
    const HWND list = Control(id);
    const LRESULT selected = ::SendMessageA(list, LB_GETCURSEL, 0, 0);
    std::string texts;
    for (LRESULT i = 0; i < ::SendMessageA(list, LB_GETCOUNT, 0, 0); ++i) {
      char text[1000] = "";
      ::SendMessageA(list, LB_GETTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(text));
      texts += (i == 0 ? "" : "|") + (i == selected ? '[' + std::string(text) + ']' : std::string(text));
    }
    return texts;
  }

  [[nodiscard]] std::string Text(int id) const { return TextOf(Control(id)); }

  // Lets files fall on the panel.
  void Drop(const std::vector<std::string>& paths) const {
    std::string names;
    for (const std::string& path : paths) names += path + '\0';
    names += '\0';
    const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(DROPFILES) + names.size());
    auto* const drop = static_cast<DROPFILES*>(::GlobalLock(memory));
    drop->pFiles = sizeof(DROPFILES);
    std::copy(names.begin(), names.end(), reinterpret_cast<char*>(drop + 1));
    ::GlobalUnlock(memory);
    ::PostMessageA(panel, WM_DROPFILES, reinterpret_cast<WPARAM>(memory), 0);
  }

  // Types names into the dialog's own field and presses its Open key.
  void Open(const std::string& names) const {
    constexpr int kNameField = 0x47C;
    ::SetDlgItemTextA(dialog, kNameField, names.c_str());
    ::PostMessageA(dialog, WM_COMMAND, IDOK, 0);
  }

  static std::string TextOf(HWND window) {
    char text[1000] = "";
    ::SendMessageA(window, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
    return text;
  }

  // Presses a key of a dialog, and waits until the dialog is gone.
  static void Close(HWND window, int id) {
    ::PostMessageA(window, WM_COMMAND, static_cast<WPARAM>(id), 0);
    EXPECT_TRUE(WaitUntil([&] { return !::IsWindow(window); }));
    Settle();
  }

  // Waits for a message box, closes it and answers what it said.
  static std::string AnswerBox(HWND expectedOwner) {
    const HWND box = WaitForWindow("Quorvex");
    EXPECT_EQ(::GetWindow(box, GW_OWNER), expectedOwner);
    const std::string text = TextOf(::GetDlgItem(box, 0xFFFF));
    Close(box, IDOK);
    return text;
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

 private:
  static void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD) { ++ticks; }

  static HWND PanelOf(HWND window) {
    HWND child = nullptr;
    do {
      child = ::FindWindowExA(window, child, "#32770", nullptr);
    } while (child != nullptr && ::GetDlgItem(child, IDC_EXPAND) == nullptr);
    return child;
  }

  // A dialog by its caption; the Open File dialog when there is none.
  static HWND WaitForWindow(const std::string& caption) {
    HWND found = nullptr;
    const auto look = [&] {
      found = FindDialog([&](HWND window, const std::string& text) {
        return caption.empty() ? PanelOf(window) != nullptr : text == caption;
      });
      return found != nullptr;
    };
    EXPECT_TRUE(WaitUntil(look, 15000)) << "no dialog " << caption;
    return found;
  }

  void Use(const Script& script) {
    dialog = WaitForWindow("");
    if (dialog == nullptr) return;
    panel = PanelOf(dialog);
    Settle();
    script(*this);
    // Whatever a failed script has left open stands before the dialog.
    WaitUntil([this] {
      if (::IsWindow(dialog)) ::PostMessageA(::GetLastActivePopup(dialog), WM_COMMAND, IDCANCEL, 0);
      return !::IsWindow(dialog);
    });
  }

  static inline std::atomic<int> ticks = 0;

  UINT_PTR timer = ::SetTimer(nullptr, 0, 10, Tick);
  HWND dialog = nullptr;
  HWND panel = nullptr;
  std::thread thread;
};

}  // namespace quorvex
