#include "devices/media/media_select_panel.h"

#include <algorithm>

#include "base/text.h"
#include "devices/media/album_file.h"
#include "devices/media/m3u.h"
#include "devices/media/m3u_file.h"
#include "devices/media/playlist_title_dialog.h"
#include "devices/shared_state.h"
#include "panel/list_box.h"
#include "resources/ids.h"

namespace quorvex {
namespace {

std::vector<std::string> DroppedPaths(HDROP drop) {
  constexpr UINT kCount = 0xFFFFFFFF;
  std::vector<std::string> paths(::DragQueryFileA(drop, kCount, nullptr, 0));
  for (UINT i = 0; i < paths.size(); ++i) {
    paths[i].resize(::DragQueryFileA(drop, i, nullptr, 0));
    ::DragQueryFileA(drop, i, paths[i].data(), static_cast<UINT>(paths[i].size()) + 1);
  }
  return paths;
}

void ImportM3UToContent(const std::string& path, std::vector<std::string>& entries) {
  for (std::string& entry : AlbumEntriesOfM3U(ReadM3UFile(path))) entries.push_back(std::move(entry));
}

std::vector<std::string> EntriesOf(const std::vector<std::string>& paths) {
  std::vector<std::string> entries;
  for (const std::string& path : paths) {
    if (IsM3U(path)) {
      ImportM3UToContent(path, entries);
    } else {
      entries.push_back(path);
    }
  }
  return entries;
}

}  // namespace

MediaSelectPanel::MediaSelectPanel(HWND panel, HWND dialog) : window(panel), owner(dialog), drops(panel) {
  ::DragAcceptFiles(window, TRUE);
  LoadAlbumList(ReadAlbumStore());
}

void MediaSelectPanel::OnCommand(int control, int notification) {
  switch (control) {
    case IDC_ALBUM_LIST:
      if (notification == LBN_SELCHANGE) SelectAlbum();
      break;
    case IDC_NEW_ALBUM: NewAlbum(); break;
    case IDC_EDIT_ALBUM: EditAlbum(); break;
    case IDC_DELETE_ALBUM: DeleteAlbum(); break;
    case IDC_DELETE_ENTRY: DeleteContentEntry(); break;
    default: break;
  }
}

void MediaSelectPanel::OnDropFiles(HDROP drop) {
  const std::vector<std::string> paths = DroppedPaths(drop);
  ::DragFinish(drop);
  if (albums.selected < 0) {
    ::MessageBoxA(owner, "You must create a new album first.", "Quorvex", MB_ICONHAND | MB_TOPMOST);
    return;
  }
  const std::vector<std::string> entries = EntriesOf(paths);
  if (!ChangeAlbumStore([&](IniDocument& store) { AppendToAlbum(store, currentPlaylist, entries); })) return;
  LoadAlbumContent(ReadAlbumStore());
  ::SendDlgItemMessageA(window, IDC_CONTENT_LIST, LB_SETTOPINDEX, content.size() - 1, 0);
}

void MediaSelectPanel::LoadAlbumList(const IniDocument& store) {
  albums = quorvex::LoadAlbumList(store);
  FillList(IDC_ALBUM_LIST, albums.titles);
  ::SendDlgItemMessageA(window, IDC_ALBUM_LIST, LB_SETCURSEL, static_cast<WPARAM>(albums.selected), 0);
  ShowSelectedAlbum(store);
}

void MediaSelectPanel::ShowSelectedAlbum(const IniDocument& store) {
  currentPlaylist =
      albums.selected < 0 ? std::string() : albums.titles[static_cast<std::size_t>(albums.selected)];
  ::SetDlgItemTextA(window, IDC_ALBUM_TITLE, currentPlaylist.c_str());
  LoadAlbumContent(store);
}

void MediaSelectPanel::LoadAlbumContent(const IniDocument& store) {
  content = quorvex::LoadAlbumContent(store, currentPlaylist);
  FillList(IDC_CONTENT_LIST, content);
}

void MediaSelectPanel::FillList(int control, const std::vector<std::string>& texts) const {
  const HWND list = ::GetDlgItem(window, control);
  ::SendMessageA(list, WM_SETREDRAW, FALSE, 0);
  ::SendMessageA(list, LB_RESETCONTENT, 0, 0);
  for (const std::string& text : texts)
    ::SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
  FitWidth(list, texts);
  ::SendMessageA(list, WM_SETREDRAW, TRUE, 0);
  ::InvalidateRect(list, nullptr, TRUE);
}

int MediaSelectPanel::SelectedIn(int control) const {
  return static_cast<int>(::SendDlgItemMessageA(window, control, LB_GETCURSEL, 0, 0));
}

void MediaSelectPanel::SelectAlbum() {
  albums.selected = SelectedIn(IDC_ALBUM_LIST);
  ChangeAlbumStore([this](IniDocument& store) { SaveSelection(store, albums.selected); });
  ShowSelectedAlbum(ReadAlbumStore());
}

void MediaSelectPanel::ChangeAlbums(const std::function<void(IniDocument&)>& change) {
  if (ChangeAlbumStore(change)) LoadAlbumList(ReadAlbumStore());
}

void MediaSelectPanel::NewAlbum() {
  const std::optional<std::string> title = PlaylistTitleDialog(albums.titles, "").Run(owner);
  if (title) ChangeAlbums([&](IniDocument& store) { AddAlbum(store, *title); });
}

void MediaSelectPanel::EditAlbum() {
  if (albums.selected < 0) return;
  const std::optional<std::string> title = PlaylistTitleDialog(albums.titles, currentPlaylist).Run(owner);
  if (title) ChangeAlbums([&](IniDocument& store) { RenameAlbum(store, currentPlaylist, *title); });
}

void MediaSelectPanel::DeleteAlbum() {
  if (albums.selected < 0) return;
  ChangeAlbums([](IniDocument& store) { quorvex::DeleteAlbum(store, currentPlaylist); });
}

void MediaSelectPanel::DeleteContentEntry() {
  const int selected = SelectedIn(IDC_CONTENT_LIST);
  if (selected < 0) return;
  const std::string entry = content[static_cast<std::size_t>(selected)];
  if (!ChangeAlbumStore(
          [&](IniDocument& store) { quorvex::DeleteContentEntry(store, currentPlaylist, entry); })) {
    return;
  }
  const auto first = std::find_if(content.begin(), content.end(),
                                  [&](const auto& other) { return EqualNoCase(other, entry); });
  const auto place = static_cast<int>(first - content.begin());
  LoadAlbumContent(ReadAlbumStore());
  const int next = std::min(place, static_cast<int>(content.size()) - 1);
  ::SendDlgItemMessageA(window, IDC_CONTENT_LIST, LB_SETCURSEL, static_cast<WPARAM>(next), 0);
}

}  // namespace quorvex
