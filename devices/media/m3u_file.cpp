#include "devices/media/m3u_file.h"

#include "base/file_bytes.h"
#include "base/handles.h"
#include "devices/media/m3u.h"

namespace quorvex {
namespace {

constexpr LONGLONG kLargestPlaylistFile = 16 << 20;

}  // namespace

std::string ReadM3UFile(const std::string& path) {
  const DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const UniqueHandle file =
      OwnFile(::CreateFileA(path.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr));
  return M3UText(ReadAll(file.Get(), kLargestPlaylistFile).value_or(""));
}

}  // namespace quorvex
