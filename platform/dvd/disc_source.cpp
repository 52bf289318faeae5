#include "platform/dvd/disc_source.h"

#include <algorithm>
#include <cstring>

#include "base/text.h"

namespace quorvex {
namespace {

namespace fs = std::filesystem;

std::string Utf8(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

// The folder that the disc's files lie in: itself, or one of this name in it. Empty when there is none.
fs::path VideoFolder(const fs::path& folder) {
  std::error_code error;
  for (const char* name : {"VIDEO_TS", "video_ts"})
    if (fs::is_directory(folder / name, error)) return folder / name;
  if (EqualNoCase(Utf8(folder.filename()), "VIDEO_TS")) return folder;
  return {};
}

}  // namespace

std::unique_ptr<DiscSource> DiscSource::Open(const fs::path& path) {
  std::unique_ptr<DiscSource> source(new DiscSource);
  std::error_code error;
  const fs::path clean = path.has_filename() ? path : path.parent_path();
  if (fs::is_directory(path, error)) {
    const fs::path folder = VideoFolder(clean);
    if (folder.empty()) return nullptr;
    source->folder = Utf8(folder);
    return source;
  }
  source->image.open(path, std::ios::binary);
  source->size = fs::file_size(path, error);
  return source->image && !error ? std::move(source) : nullptr;
}

bool DiscSource::HoldsVideo() {
  std::error_code error;
  if (!folder.empty()) {
    const fs::path files(std::u8string(folder.begin(), folder.end()));
    return fs::exists(files / "VIDEO_TS.IFO", error) || fs::exists(files / "video_ts.ifo", error) ||
           fs::exists(files / "VIDEO_TS.BUP", error);
  }
  constexpr int kDirectories = 2 << 20;  // they come first
  std::string start(kDirectories, '\0');
  if (!Seek(0)) return false;
  start.resize(static_cast<std::size_t>(std::max(Read(start.data(), kDirectories), 0)));
  return start.find("VIDEO_TS.IFO") != std::string::npos;
}

bool DiscSource::Seek(std::uint64_t position) {
  place = position;
  return !removed && position <= size;
}

int DiscSource::Read(void* target, int bytes) {
  if (removed) return -1;
  const auto wanted = std::min<std::uint64_t>(static_cast<std::uint64_t>(bytes), size - std::min(place, size));
  std::memset(target, 0, wanted);
  image.clear();
  image.seekg(static_cast<std::streamoff>(place));
  image.read(static_cast<char*>(target), static_cast<std::streamsize>(wanted));
  place += wanted;
  return static_cast<int>(wanted);
}

}  // namespace quorvex
