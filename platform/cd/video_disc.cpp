#include "platform/cd/video_disc.h"

#include <algorithm>
#include <fstream>
#include <string>

#include "base/text.h"

namespace quorvex {
namespace {

namespace fs = std::filesystem;

// An image's directories come first.
constexpr std::size_t kDirectoryBytes = std::size_t{2} << 20;

bool NamesVideo(const fs::path& image) {
  std::ifstream file(image, std::ios::binary);
  std::string start(kDirectoryBytes, '\0');
  file.read(start.data(), static_cast<std::streamsize>(start.size()));
  start.resize(static_cast<std::size_t>(file.gcount()));
  return start.find("VIDEO_TS.IFO") != std::string::npos;
}

}  // namespace

fs::path VideoFolder(const fs::path& folder) {
  const fs::path clean = folder.has_filename() ? folder : folder.parent_path();
  std::error_code error;
  for (const char* name : {"VIDEO_TS", "video_ts"})
    if (fs::is_directory(clean / name, error)) return clean / name;
  const std::u8string last = clean.filename().u8string();
  return EqualNoCase(std::string(last.begin(), last.end()), "VIDEO_TS") ? clean : fs::path();
}

bool HoldsVideoDisc(const fs::path& path) {
  std::error_code error;
  if (!fs::is_directory(path, error)) return NamesVideo(path);
  const fs::path folder = VideoFolder(path);
  constexpr const char* kTables[] = {"VIDEO_TS.IFO", "VIDEO_TS.BUP", "video_ts.ifo", "video_ts.bup"};
  return !folder.empty() && std::any_of(std::begin(kTables), std::end(kTables),
                                        [&](const char* name) { return fs::exists(folder / name, error); });
}

}  // namespace quorvex
