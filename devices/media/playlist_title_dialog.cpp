#include "devices/media/playlist_title_dialog.h"

#include <algorithm>
#include <string_view>

#include "base/text.h"
#include "base/wide_text.h"
#include "devices/media/album_store.h"
#include "panel/main_window.h"
#include "resources/ids.h"

namespace quorvex {
namespace {

// Whether two titles are the same without regard to case, in any script.
bool SameTitle(std::string_view a, std::string_view b) {
  const std::wstring x = WideText(a);
  const std::wstring y = WideText(b);
  return ::CompareStringOrdinal(x.data(), static_cast<int>(x.size()), y.data(), static_cast<int>(y.size()),
                                TRUE) == CSTR_EQUAL;
}

std::string EnteredTitle(HWND dialog) {
  char text[512] = "";
  ::GetDlgItemTextA(dialog, IDC_TITLE, text, sizeof text);
  return std::string(Trimmed(FirstCharacters(Trimmed(text), kLongestAlbumTitle)));
}

}  // namespace

std::optional<std::string> PlaylistTitleDialog::Run(HWND owner) {
  ::DialogBoxParamA(instance, MAKEINTRESOURCEA(IDD_PLAYLIST_TITLE), owner, Procedure,
                    reinterpret_cast<LPARAM>(this));
  return answer;
}

INT_PTR CALLBACK PlaylistTitleDialog::Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) {
    ::SetWindowLongPtrA(dialog, GWLP_USERDATA, lParam);
    reinterpret_cast<const PlaylistTitleDialog*>(lParam)->OnStart(dialog);
    return TRUE;
  }
  if (message != WM_COMMAND) return FALSE;
  switch (LOWORD(wParam)) {
    case IDOK:
      reinterpret_cast<PlaylistTitleDialog*>(::GetWindowLongPtrA(dialog, GWLP_USERDATA))->OnOk(dialog);
      return TRUE;
    case IDCANCEL: ::EndDialog(dialog, IDCANCEL); return TRUE;
    default: return FALSE;
  }
}

void PlaylistTitleDialog::OnStart(HWND dialog) const {
  ::SendDlgItemMessageA(dialog, IDC_TITLE, EM_SETLIMITTEXT, kLongestAlbumTitle, 0);
  if (!editedTitle.empty()) {
    ::SetWindowTextA(dialog, "Edit Playlist Title");
    ::SetDlgItemTextA(dialog, IDC_TITLE, editedTitle.c_str());
  }
  CenterWindow(dialog, ::GetWindow(dialog, GW_OWNER));
}

void PlaylistTitleDialog::OnOk(HWND dialog) {
  const std::string title = EnteredTitle(dialog);
  if (title.empty()) return;
  const bool unchanged = !editedTitle.empty() && SameTitle(title, editedTitle);
  if (!unchanged && IsTaken(title)) {
    ::MessageBoxA(dialog, "Duplicate playlist title entered.  Please select a new name.", "Quorvex",
                  MB_ICONHAND);
    ::SendMessageA(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(::GetDlgItem(dialog, IDC_TITLE)), TRUE);
    ::SendDlgItemMessageA(dialog, IDC_TITLE, EM_SETSEL, 0, -1);
    return;
  }
  if (!unchanged) answer = title;
  ::EndDialog(dialog, IDOK);
}

// Also by the store itself.
bool PlaylistTitleDialog::IsTaken(const std::string& title) const {
  return !IsAlbumTitle(title) || std::any_of(titles.begin(), titles.end(),
                                             [&](const auto& other) { return SameTitle(other, title); });
}

}  // namespace quorvex
