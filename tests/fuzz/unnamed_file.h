// A file without a name, which is found by its number as long as it is open.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <string_view>

#include "tests/fuzz/fuzz_target.h"

namespace quorvex {

class UnnamedFile {
 public:
  UnnamedFile() : file(::memfd_create("file", MFD_CLOEXEC)) {}
  UnnamedFile(const UnnamedFile&) = delete;
  UnnamedFile& operator=(const UnnamedFile&) = delete;
  ~UnnamedFile() { ::close(file); }

  [[nodiscard]] std::string Name() const { return std::to_string(file); }
  [[nodiscard]] std::filesystem::path Path() const { return "/proc/self/fd/" + Name(); }

  // Holds these bytes and no others, behind `zeros` that take no room.
  void Fill(std::size_t zeros, std::string_view bytes) const {
    const auto size = static_cast<off_t>(zeros + bytes.size());
    const bool filled = ::ftruncate(file, 0) == 0 && ::ftruncate(file, size) == 0 &&
                        ::pwrite(file, bytes.data(), bytes.size(), static_cast<off_t>(zeros)) ==
                            static_cast<ssize_t>(bytes.size());
    Require(filled, "the memory has room for the file");
  }

 private:
  const int file;
};

}  // namespace quorvex
