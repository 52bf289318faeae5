// What the album store remembers: the user's albums (named play lists of media files), which of them is
// selected, the folder that the file dialog showed last, and the temporary play list of the last files
// picked. The file is described in docs/stores.md.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/ini_document.h"

namespace quorvex {

// The section of the temporary play list; its keys are those of an album.
inline constexpr std::string_view kPreviewPlaylist = "P-r-e-v-i-e-W";

// In characters.
inline constexpr std::size_t kLongestAlbumTitle = 32;
inline constexpr std::size_t kLongestMediaPath = 259;

struct AlbumList {
  std::vector<std::string> titles;
  int selected = -1;  // index of the selected album, -1 when none is
};

AlbumList LoadAlbumList(const IniDocument& store);
void SaveAlbumList(IniDocument& store, const AlbumList& list);

// Remembers which place of the list is selected (-1: none) and nothing else.
void SaveSelection(IniDocument& store, int selected);

// The entries of an album or of the temporary play list, in play order; none of the title "".
std::vector<std::string> LoadAlbumContent(const IniDocument& store, std::string_view title);

// Does nothing when `title` is empty or names a section that is no album's.
void SaveAlbumContent(IniDocument& store, std::string_view title, std::span<const std::string> entries);

// Appends entries to an album's content.
void AppendToAlbum(IniDocument& store, std::string_view title, std::span<const std::string> entries);

// Takes the first entry that equals `entry`, without regard to the case of A to Z, out of an album's content.
void DeleteContentEntry(IniDocument& store, std::string_view title, std::string_view entry);

void SavePreviewPlaylist(IniDocument& store, std::span<const std::string> entries);

// Whether an album may bear a title: it names none of the store's own sections, and the store gives it back
// as it was.
bool IsAlbumTitle(std::string_view title);

// The three changes of the list find an album without regard to the case of A to Z.

// Appends an empty album to the list and selects it; one that is there already is only selected.
void AddAlbum(IniDocument& store, std::string_view title);

// Takes an album away with its content, and selects the one after it, or the one before when it was the last.
void DeleteAlbum(IniDocument& store, std::string_view title);

// Gives an album another title, which no album has yet; it keeps its place and its content, and is selected.
void RenameAlbum(IniDocument& store, std::string_view from, std::string_view to);

// The folder that the file dialog showed last; empty when none is known.
std::string LastFolder(const IniDocument& store);
void SaveLastFolder(IniDocument& store, std::string_view folder);

}  // namespace quorvex
