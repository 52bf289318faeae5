#include "devices/tv/ready_to_record_dialog.h"

#include "panel/main_window.h"
#include "resources/ids.h"

namespace quorvex {
namespace {

INT_PTR CALLBACK ReadyToRecordDialog(HWND dialog, UINT message, WPARAM wParam, LPARAM /*lParam*/) {
  if (message == WM_INITDIALOG) {
    CenterWindow(dialog, mainWindow);
    BringIntoView(dialog);
    return TRUE;
  }
  if (message != WM_COMMAND) return FALSE;
  const int button = LOWORD(wParam);
  if (button != IDOK && button != IDCANCEL) return FALSE;
  ::EndDialog(dialog, button == IDOK ? 1 : 0);
  return TRUE;
}

}  // namespace

bool AskReadyToRecord() {
  return ::DialogBoxParamA(instance, MAKEINTRESOURCEA(IDD_READY_TO_RECORD), mainWindow, ReadyToRecordDialog,
                           0) == 1;
}

}  // namespace quorvex
