#include "devices/media/open_file_dialog.h"

#include <windows.h>

#include <commdlg.h>
#include <dlgs.h>

#include <algorithm>
#include <optional>

#include "base/geometry.h"
#include "devices/media/album_file.h"
#include "devices/media/album_store.h"
#include "devices/media/file_selection.h"
#include "devices/media/media_select_panel.h"
#include "devices/shared_state.h"
#include "panel/main_window.h"
#include "panel/status_display.h"
#include "panel/window_place.h"
#include "resources/ids.h"

namespace quorvex {
namespace {

constexpr std::size_t kSelectionSize = 260;

constexpr char kFilter[] =
    "All supported files (all types)\0"
    "*.avi;*.mpg; *.mpeg; *.mpv; *.mp2; *.mpa; *.mpe;*.mov; *.qt;*.mp3; *.m3u;*.wav; *.mid\0"
    "AVI files (*.avi)\0*.avi\0"
    "MPEG-1 files (*.mpg; *.mpeg; *.mpv; *.mp2; *.mpa; *.mpe)\0*.mpg; *.mpeg; *.mpv; *.mp2; *.mpa; *.mpe\0"
    "QuickTime files (*.mov; *.qt)\0*.mov; *.qt\0"
    "MP3 files (*.mp3; *.m3u)\0*.mp3; *.m3u\0"
    "MIDI files (*.mid)\0*.mid\0"
    "Wave files (*.wav)\0*.wav\0"
    "All files (*.*)\0;*.*\0";

RECT Place(HWND window) {
  RECT place{};
  ::GetWindowRect(window, &place);
  return place;
}

void Widen(HWND window, LONG by) {
  const RECT place = Place(window);
  ::SetWindowPos(window, nullptr, 0, 0, place.right - place.left + by, place.bottom - place.top,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

class OpenFileDialog {
 public:
  OpenFileResult Run();

 private:
  static UINT_PTR CALLBACK Hook(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  UINT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
  void OnCreation(HWND window);
  void OnNotification(const NMHDR& header);
  void OnCommand(int control, int notification);
  void OnLayoutDone();
  void FillWidth() const;
  void RememberFolder() const;
  void Expand(bool expand);
  void OpenPlaylist();

  HWND panelWindow = nullptr;
  HWND dialog = nullptr;
  std::optional<MediaSelectPanel> panel;
  Size full;
  Size collapsed;
  bool expanded = false;
  bool openPlaylistRequested = false;
};

OpenFileResult OpenFileDialog::Run() {
  const std::string folder = LastFolder(ReadAlbumStore());
  std::string selection(kSelectionSize, '\0');
  OPENFILENAMEA settings{};
  settings.lStructSize = sizeof settings;
  settings.hwndOwner = mainWindow;
  settings.hInstance = instance;
  settings.lpstrFilter = kFilter;
  settings.nFilterIndex = 1;
  settings.lpstrFile = selection.data();
  settings.nMaxFile = kSelectionSize;
  settings.lpstrInitialDir = folder.empty() ? nullptr : folder.c_str();
  settings.Flags = OFN_EXPLORER | OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST | OFN_ALLOWMULTISELECT |
                   OFN_ENABLETEMPLATE | OFN_ENABLEHOOK | OFN_HIDEREADONLY;
  settings.lpstrDefExt = "MPG";
  settings.lCustData = reinterpret_cast<LPARAM>(this);
  settings.lpfnHook = Hook;
  settings.lpTemplateName = MAKEINTRESOURCEA(IDD_MEDIA_SELECT);
  const bool picked = ::GetOpenFileNameA(&settings) != FALSE;
  // Wine cuts off what Windows refuses.
  const bool whole = picked ? IsWholeSelection(selection) : ::CommDlgExtendedError() != FNERR_BUFFERTOOSMALL;
  if (picked && whole) return {OpenFileOutcome::kFilesPicked, selection};
  if (!whole) SetDisplayText("Too many files selected");
  return {openPlaylistRequested ? OpenFileOutcome::kOpenPlaylist : OpenFileOutcome::kCancelled, {}};
}

UINT_PTR CALLBACK OpenFileDialog::Hook(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) {
    const LPARAM self = reinterpret_cast<const OPENFILENAMEA*>(lParam)->lCustData;
    ::SetWindowLongPtrA(window, GWLP_USERDATA, self);
    reinterpret_cast<OpenFileDialog*>(self)->OnCreation(window);
    return FALSE;
  }
  auto* const self = reinterpret_cast<OpenFileDialog*>(::GetWindowLongPtrA(window, GWLP_USERDATA));
  return self == nullptr ? FALSE : self->OnMessage(message, wParam, lParam);
}

UINT_PTR OpenFileDialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (!panel) return FALSE;
  switch (message) {
    case WM_DESTROY: panel.reset(); return FALSE;
    case WM_NOTIFY: OnNotification(*reinterpret_cast<const NMHDR*>(lParam)); return FALSE;
    case WM_COMMAND: OnCommand(LOWORD(wParam), HIWORD(wParam)); return TRUE;
    case WM_DROPFILES: panel->OnDropFiles(reinterpret_cast<HDROP>(wParam)); return TRUE;
    default: return FALSE;
  }
}

void OpenFileDialog::OnCreation(HWND window) {
  panelWindow = window;
  dialog = ::GetParent(window);
  ::SendMessageA(dialog, CDM_SETCONTROLTEXT, IDOK, reinterpret_cast<LPARAM>("Open File"));
  panel.emplace(window, dialog);
}

void OpenFileDialog::OnNotification(const NMHDR& header) {
  if (header.code == CDN_INITDONE) OnLayoutDone();
  if (header.code == CDN_FOLDERCHANGE) RememberFolder();
}

void OpenFileDialog::OnCommand(int control, int notification) {
  switch (control) {
    case IDC_EXPAND: Expand(!expanded); break;
    case IDC_OPEN_PLAYLIST: OpenPlaylist(); break;
    default: panel->OnCommand(control, notification); break;
  }
}

// The platform's dialog is wider than the panel below it: the right-hand list takes what is left, up to a
// margin as that on the left.
void OpenFileDialog::FillWidth() const {
  RECT client{};
  ::GetClientRect(dialog, &client);
  ::MapWindowPoints(dialog, nullptr, reinterpret_cast<POINT*>(&client), 2);
  const LONG margin = Place(::GetDlgItem(panelWindow, IDC_ALBUM_LIST)).left - client.left;
  const LONG more = client.right - margin - Place(::GetDlgItem(panelWindow, IDC_CONTENT_LIST)).right;
  if (more <= 0) return;
  Widen(panelWindow, client.right - Place(panelWindow).right);
  for (const int control : {IDC_PANEL_LINE, IDC_DRAG_HINT, IDC_ALBUM_TITLE, IDC_CONTENT_LIST})
    Widen(::GetDlgItem(panelWindow, control), more);
}

void OpenFileDialog::OnLayoutDone() {
  FillWidth();
  const RECT whole = Place(dialog);
  const RECT edge = Place(::GetDlgItem(panelWindow, IDC_COLLAPSED_EDGE));
  const RECT control = PlaceOf(mainWindow);
  full = {whole.right - whole.left, whole.bottom - whole.top};
  collapsed = {full.width, edge.top - whole.top};
  const int left = control.left + Half((control.right - control.left) - full.width);
  const int top = std::max(Half(::GetSystemMetrics(SM_CYSCREEN) - full.height), 0);
  ::SetWindowPos(dialog, nullptr, left, top, full.width, full.height, SWP_NOZORDER | SWP_NOACTIVATE);
  Expand(false);
}

// The next dialog starts where this one is; places that are no folders of the file system are not remembered.
void OpenFileDialog::RememberFolder() const {
  std::string folder(kLongestMediaPath * 4, '\0');
  const LRESULT length =
      ::SendMessageA(dialog, CDM_GETFOLDERPATH, folder.size(), reinterpret_cast<LPARAM>(folder.data()));
  if (length <= 1 || length > static_cast<LRESULT>(folder.size())) return;
  folder.resize(static_cast<std::size_t>(length) - 1);
  const DWORD attributes = ::GetFileAttributesA(folder.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) return;
  ChangeAlbumStore([&](IniDocument& store) { SaveLastFolder(store, folder); });
}

void OpenFileDialog::Expand(bool expand) {
  expanded = expand;
  const Size& size = expand ? full : collapsed;
  ::SetWindowPos(dialog, nullptr, 0, 0, size.width, size.height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  for (const int control : {IDC_OPEN_PLAYLIST, IDC_DRAG_HINT})
    ::ShowWindow(::GetDlgItem(panelWindow, control), expand ? SW_SHOW : SW_HIDE);
}

// The dialog closes with no selection.
void OpenFileDialog::OpenPlaylist() {
  openPlaylistRequested = true;
  const HWND cancel = ::GetDlgItem(dialog, IDCANCEL);
  ::PostMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), reinterpret_cast<LPARAM>(cancel));
}

}  // namespace

OpenFileResult RunOpenFileDialog() { return OpenFileDialog().Run(); }

}  // namespace quorvex
