#include "devices/media/album_file.h"

#include "base/ini_file.h"
#include "devices/shared_state.h"
#include "panel/status_display.h"

namespace quorvex {
namespace {

constexpr char kCannotRead[] = "Cannot read mfiles.abm";
constexpr char kCannotWrite[] = "Cannot write mfiles.abm";

}  // namespace

IniDocument ReadAlbumStore() {
  IniSnapshot snapshot = IniFile(mediaAlbumPath).Read();
  if (snapshot.state == IniSnapshot::State::kUnreadable) SetDisplayText(kCannotRead);
  return std::move(snapshot.document);
}

bool ChangeAlbumStore(const std::function<void(IniDocument&)>& change) {
  const IniFile::Result result = IniFile(mediaAlbumPath).Update(change);
  if (result == IniFile::Result::kDone) return true;
  SetDisplayText(result == IniFile::Result::kUnreadable ? kCannotRead : kCannotWrite);
  return false;
}

}  // namespace quorvex
