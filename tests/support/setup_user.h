// Uses the Setup sheet as its user does, by its controls.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>

#include "setup/enabling.h"
#include "tests/support/dialog_user.h"

namespace quorvex {

class SetupUser : public DialogUser {
 public:
  using Script = std::function<void(SetupUser&)>;

  explicit SetupUser(Script script)
      : DialogUser([](HWND window) { return CaptionOf(window) == "Setup Options"; },
                   [this, script = std::move(script)] { script(*this); }) {}

  void Show(SetupPageKind page) const {
    ::SendMessageA(Dialog(), PSM_SETCURSEL, static_cast<WPARAM>(page), 0);
  }
  [[nodiscard]] SetupPageKind Shown() const {
    const HWND tabs = reinterpret_cast<HWND>(::SendMessageA(Dialog(), PSM_GETTABCONTROL, 0, 0));
    return static_cast<SetupPageKind>(::SendMessageA(tabs, TCM_GETCURSEL, 0, 0));
  }
  [[nodiscard]] HWND Page() const {
    return reinterpret_cast<HWND>(::SendMessageA(Dialog(), PSM_GETCURRENTPAGEHWND, 0, 0));
  }
  [[nodiscard]] HWND Control(int id) const { return ::GetDlgItem(Page(), id); }
  [[nodiscard]] bool IsEnabled(int id) const { return ::IsWindowEnabled(Control(id)) != FALSE; }
  [[nodiscard]] bool IsChecked(int id) const {
    return ::SendMessageA(Control(id), BM_GETCHECK, 0, 0) == BST_CHECKED;
  }
  [[nodiscard]] std::string Text(int id) const { return TextOf(Control(id)); }

  void Press(int id) const {
    EXPECT_TRUE(IsEnabled(id)) << id;
    ::SendMessageA(Control(id), BM_CLICK, 0, 0);
  }
  // Presses a key that opens a dialog or a box, and waits for that.
  [[nodiscard]] HWND PressFor(int id, const std::string& caption) const {
    EXPECT_TRUE(IsEnabled(id)) << id;
    ::PostMessageA(Control(id), BM_CLICK, 0, 0);
    return WaitForWindow(caption);
  }

  [[nodiscard]] bool CanApply() const {
    constexpr int kApplyNow = 0x3021;
    return ::IsWindowEnabled(::GetDlgItem(Dialog(), kApplyNow)) != FALSE;
  }
  void Apply() const { ::SendMessageA(Dialog(), PSM_PRESSBUTTON, PSBTN_APPLYNOW, 0); }
  void Ok() const { Leave(Dialog(), IDOK); }
  void Cancel() const { Leave(Dialog(), IDCANCEL); }
};

}  // namespace quorvex
