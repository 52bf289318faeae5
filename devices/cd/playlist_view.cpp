#include "devices/cd/playlist_view.h"

#include <numeric>
#include <string>
#include <vector>

#include "devices/cd/disc_store.h"
#include "panel/list_box.h"
#include "panel/main_window.h"
#include "resources/ids.h"

namespace quorvex {
namespace {

int namingTrack = 1;

LRESULT Send(HWND dialog, int control, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
  return ::SendDlgItemMessageA(dialog, control, message, wParam, lParam);
}

void SetText(HWND dialog, int control, const std::string& text) {
  ::SetDlgItemTextA(dialog, control, text.c_str());
}

std::string EnteredText(HWND dialog, int control) {
  char text[512] = "";
  ::GetDlgItemTextA(dialog, control, text, sizeof text);
  return text;
}

int ItemCount(HWND dialog, int list) { return static_cast<int>(Send(dialog, list, LB_GETCOUNT)); }

std::vector<int> SelectedItems(HWND dialog, int list) {
  std::vector<int> places(static_cast<std::size_t>(Send(dialog, list, LB_GETSELCOUNT)));
  Send(dialog, list, LB_GETSELITEMS, places.size(), reinterpret_cast<LPARAM>(places.data()));
  return places;
}

// Puts a track into a list; at its end with place -1.
void InsertTrack(HWND dialog, int list, int place, int track) {
  const std::string text = EditorOf(dialog).TrackText(track);
  const LRESULT item =
      Send(dialog, list, LB_INSERTSTRING, static_cast<WPARAM>(place), reinterpret_cast<LPARAM>(text.c_str()));
  Send(dialog, list, LB_SETITEMDATA, static_cast<WPARAM>(item), track);
}

// Shows a track's new name where a list has it; what is selected and how far it is scrolled stay.
void RefreshTrack(HWND dialog, int list, int track) {
  const LRESULT top = Send(dialog, list, LB_GETTOPINDEX);
  for (int place = 0; place < ItemCount(dialog, list); ++place) {
    const auto item = static_cast<WPARAM>(place);
    if (Send(dialog, list, LB_GETITEMDATA, item) != track) continue;
    const LRESULT selected = Send(dialog, list, LB_GETSEL, item);
    Send(dialog, list, LB_DELETESTRING, item);
    InsertTrack(dialog, list, place, track);
    Send(dialog, list, LB_SETSEL, static_cast<WPARAM>(selected), place);
  }
  Send(dialog, list, LB_SETTOPINDEX, static_cast<WPARAM>(top));
}

// Lets a list scroll sideways to the end of its texts.
void FitList(HWND dialog, int list) {
  std::vector<std::string> texts;
  for (int place = 0; place < ItemCount(dialog, list); ++place) {
    const LRESULT track = Send(dialog, list, LB_GETITEMDATA, static_cast<WPARAM>(place));
    texts.push_back(EditorOf(dialog).TrackText(static_cast<int>(track)));
  }
  FitWidth(::GetDlgItem(dialog, list), texts);
}

void ScrollToEnd(HWND dialog) {
  Send(dialog, IDC_PLAYLIST, LB_SETTOPINDEX, static_cast<WPARAM>(ItemCount(dialog, IDC_PLAYLIST) - 1));
}

void AddTracks(HWND dialog, const std::vector<int>& discIndexes) {
  for (const int index : discIndexes)
    if (!AddPlaylistEntry(dialog, index)) break;
  ScrollToEnd(dialog);
}

void ShowEntries(HWND dialog) {
  Send(dialog, IDC_PLAYLIST, LB_RESETCONTENT);
  for (const int track : EditorOf(dialog).Entries()) InsertTrack(dialog, IDC_PLAYLIST, -1, track);
}

std::string TotalTime(int seconds) {
  return FormatTotalTime(seconds, LoadText(IDS_MINUTES_SECONDS), LoadText(IDS_HOURS_MINUTES_SECONDS));
}

}  // namespace

void SetEditor(HWND dialog, PlaylistEditor& editor) {
  ::SetWindowLongPtrA(dialog, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&editor));
}

PlaylistEditor& EditorOf(HWND dialog) {
  return *reinterpret_cast<PlaylistEditor*>(::GetWindowLongPtrA(dialog, GWLP_USERDATA));
}

void ShowDisc(HWND dialog) {
  const PlaylistEditor& editor = EditorOf(dialog);
  for (const int field : {IDC_DISC_TITLE, IDC_DISC_ARTIST, IDC_TRACK_NAME})
    Send(dialog, field, EM_SETLIMITTEXT, kLongestTitle);
  SetText(dialog, IDC_DISC_TITLE, editor.Names().title);
  SetText(dialog, IDC_DISC_ARTIST, editor.Names().artist);
  SetText(dialog, IDC_DISC_COUNT, std::to_string(editor.TrackCount()));
  SetText(dialog, IDC_DISC_TIME, TotalTime(editor.DiscTime()));
  for (int track = 1; track <= editor.TrackCount(); ++track) InsertTrack(dialog, IDC_DISC_CONTENT, -1, track);
  FitList(dialog, IDC_DISC_CONTENT);
  SelectTrackForNaming(dialog, editor.HasTrack(namingTrack) ? namingTrack : 1);
  ::EnableWindow(::GetDlgItem(dialog, IDOK), editor.DiscId().empty() ? FALSE : TRUE);
}

void ShowStoredPlaylist(HWND dialog, std::span<const int> tracks) {
  for (const int track : tracks)
    if (!AddPlaylistEntry(dialog, track - 1)) break;
  Send(dialog, IDC_PLAYLIST, LB_SETTOPINDEX);
}

bool AddPlaylistEntry(HWND dialog, int discIndex) {
  const int track = discIndex + 1;
  if (!EditorOf(dialog).AddEntry(track)) {
    TellUser(dialog, LoadText(IDS_PLAYLIST_FULL));
    return false;
  }
  InsertTrack(dialog, IDC_PLAYLIST, -1, track);
  ScrollToEnd(dialog);
  return true;
}

void AddSelectedTracks(HWND dialog) { AddTracks(dialog, SelectedItems(dialog, IDC_DISC_CONTENT)); }

void AddAllTracks(HWND dialog) {
  std::vector<int> all(static_cast<std::size_t>(EditorOf(dialog).TrackCount()));
  std::iota(all.begin(), all.end(), 0);
  AddTracks(dialog, all);
}

void RemoveSelectedEntries(HWND dialog) {
  EditorOf(dialog).RemoveEntries(SelectedItems(dialog, IDC_PLAYLIST));
  ShowEntries(dialog);
  ScrollToEnd(dialog);
}

void RemoveAllEntries(HWND dialog) {
  EditorOf(dialog).RemoveAllEntries();
  ShowEntries(dialog);
}

void ShowPlaylistTotals(HWND dialog) {
  const PlaylistEditor& editor = EditorOf(dialog);
  FitList(dialog, IDC_PLAYLIST);
  SetText(dialog, IDC_PLAYLIST_COUNT, std::to_string(editor.Entries().size()));
  SetText(dialog, IDC_PLAYLIST_TIME, TotalTime(editor.PlaylistTime()));
}

void SelectTrackForNaming(HWND dialog, int track) {
  namingTrack = track;
  SetText(dialog, IDC_NAMING_LABEL, DefaultTrackTitle(LoadText(IDS_NAMING_TRACK), track) + ":");
  SetText(dialog, IDC_TRACK_NAME, EditorOf(dialog).TrackName(track));
}

void ClearSelection(HWND dialog, int list) {
  constexpr LPARAM kEveryItem = -1;
  Send(dialog, list, LB_SETSEL, FALSE, kEveryItem);
}

void NameTrack(HWND dialog) {
  PlaylistEditor& editor = EditorOf(dialog);
  if (!editor.HasTrack(namingTrack)) return;
  editor.Rename(namingTrack, EnteredText(dialog, IDC_TRACK_NAME));
  for (const int list : {IDC_DISC_CONTENT, IDC_PLAYLIST}) {
    RefreshTrack(dialog, list, namingTrack);
    FitList(dialog, list);
  }
  const int next = editor.TrackAfter(namingTrack);
  ClearSelection(dialog, IDC_DISC_CONTENT);
  Send(dialog, IDC_DISC_CONTENT, LB_SETSEL, TRUE, next - 1);
  SelectTrackForNaming(dialog, next);
  Send(dialog, IDC_TRACK_NAME, EM_SETSEL, 0, -1);
}

DiscNames EnteredNames(HWND dialog) {
  return {EnteredText(dialog, IDC_DISC_TITLE), EnteredText(dialog, IDC_DISC_ARTIST)};
}

void TellUser(HWND dialog, const std::string& text) {
  ::MessageBoxA(dialog, text.c_str(), "Merrow", MB_ICONHAND);
}

}  // namespace quorvex
