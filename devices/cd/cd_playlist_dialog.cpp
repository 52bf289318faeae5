#include "devices/cd/cd_playlist_dialog.h"

#include "panel/main_window.h"
#include "resources/ids.h"

namespace quorvex {
namespace {

INT_PTR CALLBACK CdPlaylistDialog(HWND dialog, UINT message, WPARAM wParam, LPARAM /*lParam*/) {
  if (message == WM_INITDIALOG) return TRUE;
  if (message != WM_COMMAND) return FALSE;
  switch (LOWORD(wParam)) {
    case IDOK: ::EndDialog(dialog, 1); return TRUE;
    case IDCANCEL: ::EndDialog(dialog, 0); return TRUE;
    default: return FALSE;
  }
}

}  // namespace

INT_PTR ShowCdPlaylistDialog(HWND owner) {
  return ::DialogBoxParamA(instance, MAKEINTRESOURCEA(IDD_CD_PLAYLIST), owner, CdPlaylistDialog, 0);
}

}  // namespace quorvex
