// Uses the Open File dialog with the Media Select panel in it.
#pragma once

#include <vector>

#include "resources/ids.h"
#include "tests/support/dialog_user.h"
#include "tests/support/file_drop.h"

namespace quorvex {

class FileDialogUser : public DialogUser {
 public:
  using Script = std::function<void(FileDialogUser&)>;

  explicit FileDialogUser(Script script)
      : DialogUser([](HWND window) { return PanelOf(window) != nullptr; },
                   [this, script = std::move(script)] { script(*this); }) {}

  [[nodiscard]] HWND Panel() const { return PanelOf(Dialog()); }
  [[nodiscard]] HWND Control(int id) const { return ::GetDlgItem(Panel(), id); }

  void Press(int id) const { ::SendMessageA(Control(id), BM_CLICK, 0, 0); }

  // Presses a key that opens a dialog or a box, and waits for that.
  [[nodiscard]] HWND PressFor(int id, const std::string& caption) const {
    ::PostMessageA(Control(id), BM_CLICK, 0, 0);
    return WaitForWindow(caption);
  }

  void SelectAlbum(int place) const {
    ::SendMessageA(Control(IDC_ALBUM_LIST), LB_SETCURSEL, static_cast<WPARAM>(place), 0);
    ::SendMessageA(Panel(), WM_COMMAND, MAKEWPARAM(IDC_ALBUM_LIST, LBN_SELCHANGE),
                   reinterpret_cast<LPARAM>(Control(IDC_ALBUM_LIST)));
  }

  [[nodiscard]] std::string List(int id) const { return TextsOf(Control(id)); }
  [[nodiscard]] std::string Text(int id) const { return TextOf(Control(id)); }

  // Lets files fall on the panel.
  void Drop(const std::vector<std::string>& paths) const {
    ::PostMessageA(Panel(), WM_DROPFILES, reinterpret_cast<WPARAM>(DropOf(paths)), 0);
  }

  // Types names into the dialog's own field and presses its Open key.
  void Open(const std::string& names) const {
    constexpr int kNameField = 0x47C;
    ::SetDlgItemTextA(Dialog(), kNameField, names.c_str());
    ::PostMessageA(Dialog(), WM_COMMAND, IDOK, 0);
  }

 private:
  static HWND PanelOf(HWND window) {
    HWND child = nullptr;
    do {
      child = ::FindWindowExA(window, child, "#32770", nullptr);
    } while (child != nullptr && ::GetDlgItem(child, IDC_EXPAND) == nullptr);
    return child;
  }
};

}  // namespace quorvex
