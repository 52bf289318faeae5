// A page of the Setup sheet. It loads its controls when it is first shown, says which commands change what it
// stores, and stores that on Apply; pages that were never shown store nothing.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <span>
#include <string>

namespace quorvex {

class SetupPage {
 public:
  SetupPage(const SetupPage&) = delete;
  SetupPage& operator=(const SetupPage&) = delete;
  virtual ~SetupPage() = default;

  // The page for PropertySheet, which destroys it; this object must live until then.
  [[nodiscard]] HPROPSHEETPAGE Create();

 protected:
  // `dialog`: the number of its template.
  explicit SetupPage(int dialog) : dialogId(dialog) {}

  virtual void OnCreate() = 0;
  // The user has pressed or changed a control; the answer is whether Apply is to be enabled.
  virtual bool OnCommand(int /*control*/) { return true; }
  // The user turns a spin control: so many steps up.
  virtual void OnSpin(int /*spin*/, int /*steps*/) {}
  virtual void OnApply() = 0;

  [[nodiscard]] HWND Window() const { return window; }
  [[nodiscard]] bool IsChecked(int control) const {
    return ::IsDlgButtonChecked(window, control) == BST_CHECKED;
  }
  void Check(int control, bool checked) const {
    ::CheckDlgButton(window, control, checked ? BST_CHECKED : BST_UNCHECKED);
  }
  void Enable(int control, bool enabled) const {
    ::EnableWindow(::GetDlgItem(window, control), enabled ? TRUE : FALSE);
  }
  // The beginning of a field's text, as much as any number needs.
  [[nodiscard]] std::string TextOf(int control) const;
  void Write(int control, const std::string& text) const { ::SetDlgItemTextA(window, control, text.c_str()); }
  void Enable(std::span<const int> controls) const {
    for (const int control : controls) Enable(control, true);
  }

 private:
  static INT_PTR CALLBACK Procedure(HWND page, UINT message, WPARAM wParam, LPARAM lParam);
  void Start(HWND page);
  void Command(int control, int notification);
  bool Notify(const NMHDR& header);

  int dialogId;
  HWND window = nullptr;
  bool loaded = false;
};

}  // namespace quorvex
