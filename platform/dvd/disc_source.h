// Where the sectors of a disc come from: an image file, or a folder with a disc's files (a real drive is
// one too).
#pragma once

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

namespace quorvex {

class DiscSource {
 public:
  // `path`: an image, a folder that holds VIDEO_TS, or that folder itself. Null when it is neither.
  static std::unique_ptr<DiscSource> Open(const std::filesystem::path& path);

  // The folder; empty for an image.
  [[nodiscard]] const std::string& Folder() const { return folder; }

  // Whether there is anything of a DVD-Video disc: its main table by name, or its name in the image.
  [[nodiscard]] bool HoldsVideo();

  // The image, as one stream. What cannot be read of it reads as zeros; beyond its end nothing does.
  bool Seek(std::uint64_t position);
  int Read(void* target, int bytes);

  // The disc is no longer there: nothing can be read any more.
  void Remove() { removed = true; }

 private:
  DiscSource() = default;

  std::string folder;  // UTF-8
  std::ifstream image;
  std::uint64_t size = 0;
  std::uint64_t place = 0;
  std::atomic<bool> removed{false};
};

}  // namespace quorvex
