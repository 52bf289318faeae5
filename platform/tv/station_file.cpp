#include "platform/tv/station_file.h"

namespace quorvex {
namespace {

std::wstring Wide(const std::string& text) {
  const int length = static_cast<int>(text.size());
  std::wstring wide(text.size(), L'\0');
  wide.resize(
      static_cast<std::size_t>(::MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), length)));
  return wide;
}

}  // namespace

MediaTime AirTime() {
  FILETIME now{};
  ::GetSystemTimePreciseAsFileTime(&now);
  return static_cast<MediaTime>(std::uint64_t{now.dwHighDateTime} << 32 | now.dwLowDateTime);
}

MediaFile* StationFile::Tune(const std::string& path) {
  if (path == tried) return file.get();
  tried = path;
  file.reset();
  isNew = true;
  std::unique_ptr<MediaFile> opened;
  const bool good = SUCCEEDED(MediaFile::Open(Wide(path), opened)) && opened->Picture() != nullptr &&
                    opened->Duration() >= kMillisecond;
  if (good) file = std::move(opened);
  return file.get();
}

}  // namespace quorvex
