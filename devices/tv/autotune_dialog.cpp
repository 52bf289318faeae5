#include "devices/tv/autotune_dialog.h"

#include "panel/main_window.h"
#include "resources/ids.h"

namespace quorvex {
namespace {

INT_PTR CALLBACK AutotuneConfirmDialog(HWND dialog, UINT message, WPARAM wParam, LPARAM /*lParam*/) {
  if (message == WM_INITDIALOG) {
    CenterWindow(dialog, ::GetWindow(dialog, GW_OWNER));
    return TRUE;
  }
  if (message != WM_COMMAND) return FALSE;
  switch (LOWORD(wParam)) {
    case IDOK: ::EndDialog(dialog, 1); return TRUE;
    case IDCANCEL: ::EndDialog(dialog, 0); return TRUE;
    default: return FALSE;
  }
}

}  // namespace

bool ConfirmAutotune(HWND owner) {
  return ::DialogBoxParamA(instance, MAKEINTRESOURCEA(IDD_AUTOTUNE), owner, AutotuneConfirmDialog, 0) == 1;
}

}  // namespace quorvex
