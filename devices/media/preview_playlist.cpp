#include "devices/media/preview_playlist.h"

#include "devices/media/album_file.h"
#include "devices/media/album_store.h"
#include "devices/media/file_selection.h"
#include "devices/media/m3u.h"
#include "devices/media/m3u_file.h"
#include "devices/shared_state.h"

namespace quorvex {

std::string BuildPreviewPlaylist(std::span<const std::string> paths) {
  std::vector<std::string> entries;
  for (const std::string& path : paths) {
    if (IsM3U(path)) {
      ImportM3UToPreview(path, entries);
    } else {
      entries.push_back(path);
    }
  }
  if (!ChangeAlbumStore([&](IniDocument& store) { SavePreviewPlaylist(store, entries); })) return "";
  currentPlaylist = kPreviewPlaylist;
  return currentPlaylist;
}

std::string BuildPreviewPlaylist(std::string_view selection) {
  return BuildPreviewPlaylist(SelectedPaths(selection));
}

void ImportM3UToPreview(const std::string& path, std::vector<std::string>& entries) {
  for (std::string& entry : PreviewEntriesOfM3U(ReadM3UFile(path))) entries.push_back(std::move(entry));
}

}  // namespace quorvex
