#include "platform/cd/open_image.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>

#include "base/text.h"
#include "platform/cd/planned_image.h"
#include "platform/cd/utf8_path.h"
#include "platform/cd/video_disc.h"

namespace quorvex {
namespace {

namespace fs = std::filesystem;

constexpr int kDataSectorBytes = 2048;

// A disc without sound: what matters of it here is that it is there.
class DataImage final : public DiscImage {
 public:
  explicit DataImage(int frames) : tracks{{false, 0, frames}} {}
  [[nodiscard]] const std::vector<DiscTrack>& Tracks() const override { return tracks; }
  [[nodiscard]] int LeadOut() const override { return tracks.front().length; }
  bool ReadSound(int, std::span<std::byte>) override { return false; }

 private:
  std::vector<DiscTrack> tracks;
};

// A file system's volume recognition begins at sector 16 of a data disc.
bool HasFileSystem(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::array<char, 6> mark{};
  file.seekg(std::streamoff{16} * kDataSectorBytes);
  file.read(mark.data(), mark.size());
  const std::string_view name(&mark[1], 5);
  return name == "CD001" || name == "BEA01";
}

OpenedImage OpenDataImage(const fs::path& path) {
  std::error_code error;
  const std::uintmax_t size = fs::file_size(path, error);
  if (error) return DiscError{"it cannot be read"};
  if (!HasFileSystem(path)) return DiscError{"it is no disc image (CUE, TOC, NRG and ISO files are)"};
  // A DVD may hold more than a CD's times can tell: none lies behind their end.
  return std::make_unique<DataImage>(
      std::min(FramesIn(static_cast<std::int64_t>(size), kDataSectorBytes), kMostFrames));
}

OpenedImage OpenFolder(const fs::path& path) {
  if (VideoFolder(path).empty()) return DiscError{"it is a folder without a DVD's VIDEO_TS"};
  return std::make_unique<DataImage>(1);
}

}  // namespace

OpenedImage OpenDiscImage(const std::string& utf8) {
  const fs::path path = PathFromUtf8(utf8);
  std::error_code error;
  if (fs::is_directory(path, error)) return OpenFolder(path);
  if (!fs::exists(path, error)) return DiscError{"there is no such file"};
  const auto hasEnding = [&](std::string_view ending) {
    return utf8.size() > ending.size() &&
           EqualNoCase(std::string_view(utf8).substr(utf8.size() - ending.size()), ending);
  };
  if (hasEnding(".cue")) return OpenCueImage(path);
  if (hasEnding(".toc")) return OpenTocImage(path);
  if (hasEnding(".nrg")) return OpenNrgImage(path);
  if (hasEnding(".bin")) {
    const fs::path sheet = fs::path(path).replace_extension(".cue");
    if (fs::exists(sheet, error)) return OpenCueImage(sheet);
  }
  return OpenDataImage(path);
}

}  // namespace quorvex
