// What the "CD Playlist" dialog shows of its editor: the two lists, their totals, the field that names
// tracks.
#pragma once

#include <windows.h>

#include "devices/cd/playlist_editor.h"

namespace quorvex {

// The editor that a dialog shows; it belongs to whoever runs the dialog.
void SetEditor(HWND dialog, PlaylistEditor& editor);
PlaylistEditor& EditorOf(HWND dialog);

// Fills a new dialog with the disc's names, tracks and totals. Without a disc there is no OK.
void ShowDisc(HWND dialog);

// Fills the Play list of a new dialog and goes to its top. What it cannot hold is left out; the user is told.
void ShowStoredPlaylist(HWND dialog, std::span<const int> tracks);

// Adds a track by its place in the Disc content list to the end of the Play list. False when that is full;
// the user is told.
bool AddPlaylistEntry(HWND dialog, int discIndex);
void AddSelectedTracks(HWND dialog);
void AddAllTracks(HWND dialog);
void RemoveSelectedEntries(HWND dialog);
void RemoveAllEntries(HWND dialog);

// Shows how many entries the Play list has, and how long they take.
void ShowPlaylistTotals(HWND dialog);

// The track that is named next. The choice outlives the dialog.
void SelectTrackForNaming(HWND dialog, int track);
void ClearSelection(HWND dialog, int list);
// Gives that track the name that was entered, and goes on to the next one.
void NameTrack(HWND dialog);

// What the fields of title and artist hold.
DiscNames EnteredNames(HWND dialog);

// A box that belongs to the dialog.
void TellUser(HWND dialog, const std::string& text);

}  // namespace quorvex
