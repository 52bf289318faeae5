// The lower part of the Open File dialog: the user's albums, what is in them, and the keys that change both.
#pragma once

#include <windows.h>

#include <shellapi.h>

#include <functional>
#include <string>
#include <vector>

#include "base/ini_document.h"
#include "devices/media/album_store.h"
#include "devices/media/file_drop_target.h"

namespace quorvex {

// Every change is made in the store, and the lists then show what the store holds: a change that cannot be
// stored is not shown. The lists' texts are kept here, for the list boxes cannot hold every text unharmed.
class MediaSelectPanel {
 public:
  // `panel`: the window of the controls; `dialog`: the file dialog it belongs to. Shows what the store holds;
  // `currentPlaylist` becomes the album that is selected in it. To be ended before the window is.
  MediaSelectPanel(HWND panel, HWND dialog);

  // A key of the panel, or a choice in the list of albums.
  void OnCommand(int control, int notification);

  // Adds the files to the selected album. The drop is finished here.
  void OnDropFiles(HDROP drop);

 private:
  void LoadAlbumList(const IniDocument& store);
  void ShowSelectedAlbum(const IniDocument& store);
  void LoadAlbumContent(const IniDocument& store);
  void FillList(int control, const std::vector<std::string>& texts) const;
  [[nodiscard]] int SelectedIn(int control) const;
  void SelectAlbum();
  void ChangeAlbums(const std::function<void(IniDocument&)>& change);
  void NewAlbum();
  void EditAlbum();
  void DeleteAlbum();
  void DeleteContentEntry();

  HWND window;
  HWND owner;
  FileDrops drops;
  AlbumList albums;
  std::vector<std::string> content;
};

}  // namespace quorvex
