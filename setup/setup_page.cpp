#include "setup/setup_page.h"

#include "panel/main_window.h"

namespace quorvex {
namespace {

SetupPage* PageOf(HWND window) {
  return reinterpret_cast<SetupPage*>(::GetWindowLongPtrA(window, GWLP_USERDATA));
}

}  // namespace

HPROPSHEETPAGE SetupPage::Create() {
  PROPSHEETPAGEA page{};
  page.dwSize = sizeof page;
  page.dwFlags = PSP_HASHELP;
  page.hInstance = instance;
  page.pszTemplate = MAKEINTRESOURCEA(dialogId);
  page.pfnDlgProc = Procedure;
  page.lParam = reinterpret_cast<LPARAM>(this);
  return ::CreatePropertySheetPageA(&page);
}

INT_PTR CALLBACK SetupPage::Procedure(HWND page, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_INITDIALOG:
      reinterpret_cast<SetupPage*>(reinterpret_cast<const PROPSHEETPAGEA*>(lParam)->lParam)->Start(page);
      return TRUE;
    case WM_COMMAND:
      if (SetupPage* const self = PageOf(page)) self->Command(LOWORD(wParam), HIWORD(wParam));
      return TRUE;
    case WM_NOTIFY: return PageOf(page)->Notify(*reinterpret_cast<const NMHDR*>(lParam)) ? TRUE : FALSE;
    default: return FALSE;
  }
}

std::string SetupPage::TextOf(int control) const {
  char text[200] = "";
  ::GetDlgItemTextA(window, control, text, sizeof text);
  return text;
}

void SetupPage::Start(HWND page) {
  window = page;
  ::SetWindowLongPtrA(page, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  OnCreate();
  loaded = true;
}

// Filling a field is no change, and coming into it is none.
void SetupPage::Command(int control, int notification) {
  const bool changed = notification == BN_CLICKED || notification == EN_CHANGE;
  if (!loaded || !changed || !OnCommand(control)) return;
  ::SendMessageA(::GetParent(window), PSM_CHANGED, reinterpret_cast<WPARAM>(window), 0);
}

bool SetupPage::Notify(const NMHDR& header) {
  if (header.code == UDN_DELTAPOS) {
    // A spin control whose range is not set counts down when it is turned up.
    OnSpin(static_cast<int>(header.idFrom), -reinterpret_cast<const NMUPDOWN&>(header).iDelta);
    ::SetWindowLongPtrA(window, DWLP_MSGRESULT, TRUE);  // it keeps no position of its own
    return true;
  }
  if (header.code != static_cast<UINT>(PSN_APPLY)) return false;
  OnApply();
  ::SetWindowLongPtrA(window, DWLP_MSGRESULT, PSNRET_NOERROR);
  return true;
}

}  // namespace quorvex
