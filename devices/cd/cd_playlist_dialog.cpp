#include "devices/cd/cd_playlist_dialog.h"

#include "devices/cd/playlist_view.h"
#include "devices/current_device.h"
#include "panel/main_window.h"
#include "resources/ids.h"

namespace quorvex {
namespace {

void SetButtonLook(HWND dialog, int button, WPARAM style) {
  ::SendDlgItemMessageA(dialog, button, BM_SETSTYLE, style, TRUE);
}

void SetDefaultButton(HWND dialog, int button) {
  const int old = LOWORD(::SendMessageA(dialog, DM_GETDEFID, 0, 0));
  if (old == button) return;
  SetButtonLook(dialog, old, BS_PUSHBUTTON);
  ::SendMessageA(dialog, DM_SETDEFID, static_cast<WPARAM>(button), 0);
  SetButtonLook(dialog, button, BS_DEFPUSHBUTTON);
}

void OnStart(HWND dialog, PlaylistEditor& editor) {
  SetEditor(dialog, editor);
  CenterWindow(dialog, ::GetWindow(dialog, GW_OWNER));
  BringIntoView(dialog);
  currentDevice->InitPlaylistDialog(dialog);
}

// A list that is worked in is the only one with a selection.
void OnListFocus(HWND dialog, int other) {
  ClearSelection(dialog, other);
  SetDefaultButton(dialog, IDOK);
}

void OnNotification(HWND dialog, int control, int notification) {
  switch (MAKELONG(control, notification)) {
    case MAKELONG(IDC_DISC_TITLE, EN_SETFOCUS):
    case MAKELONG(IDC_DISC_ARTIST, EN_SETFOCUS): SetDefaultButton(dialog, IDOK); break;
    case MAKELONG(IDC_TRACK_NAME, EN_SETFOCUS): SetDefaultButton(dialog, IDC_SET_NAME); break;
    case MAKELONG(IDC_PLAYLIST, LBN_SETFOCUS): OnListFocus(dialog, IDC_DISC_CONTENT); break;
    case MAKELONG(IDC_DISC_CONTENT, LBN_SETFOCUS): OnListFocus(dialog, IDC_PLAYLIST); break;
    case MAKELONG(IDC_DISC_CONTENT, LBN_SELCHANGE):
      SelectTrackForNaming(
          dialog,
          static_cast<int>(::SendDlgItemMessageA(dialog, IDC_DISC_CONTENT, LB_GETCARETINDEX, 0, 0)) + 1);
      break;
    default: break;
  }
}

void ChangePlaylist(HWND dialog, void (*change)(HWND)) {
  change(dialog);
  currentDevice->UpdatePlaylistTotals(dialog, IDC_PLAYLIST);
}

void OnButton(HWND dialog, int button) {
  switch (button) {
    case IDC_ADD_SELECTED: ChangePlaylist(dialog, AddSelectedTracks); break;
    case IDC_ADD_ALL: ChangePlaylist(dialog, AddAllTracks); break;
    case IDC_REMOVE_SELECTED: ChangePlaylist(dialog, RemoveSelectedEntries); break;
    case IDC_DELETE_ALL: ChangePlaylist(dialog, RemoveAllEntries); break;
    case IDC_SET_NAME: currentDevice->RenamePlaylistTrack(dialog); break;
    case IDOK: currentDevice->SavePlaylistDialog(dialog); break;
    case IDCANCEL: ::EndDialog(dialog, 0); break;
    default: break;
  }
}

INT_PTR CALLBACK CdPlaylistDialog(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_INITDIALOG: OnStart(dialog, *reinterpret_cast<PlaylistEditor*>(lParam)); return TRUE;
    case WM_COMMAND:
      if (HIWORD(wParam) == BN_CLICKED) OnButton(dialog, LOWORD(wParam));
      OnNotification(dialog, LOWORD(wParam), HIWORD(wParam));
      return TRUE;
    default: return FALSE;
  }
}

}  // namespace

INT_PTR ShowCdPlaylistDialog(HWND owner) {
  PlaylistEditor editor;
  return ::DialogBoxParamA(instance, MAKEINTRESOURCEA(IDD_CD_PLAYLIST), owner, CdPlaylistDialog,
                           reinterpret_cast<LPARAM>(&editor));
}

}  // namespace quorvex
