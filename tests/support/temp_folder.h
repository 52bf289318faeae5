// A folder of a test's own, gone with it.
#pragma once

#include <windows.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace quorvex {

class TempFolder {
 public:
  TempFolder() { std::filesystem::create_directories(path); }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;
  ~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }

  [[nodiscard]] std::string Path(const std::string& name) const { return (path / name).string(); }

  std::string Write(const std::string& name, const std::string& bytes) const {
    std::ofstream(path / name, std::ios::binary) << bytes;
    return Path(name);
  }

  [[nodiscard]] std::string Read(const std::string& name) const {
    std::ifstream file(path / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

 private:
  std::filesystem::path path =
      std::filesystem::temp_directory_path() /
      ("quorvex-" + std::to_string(::GetCurrentProcessId()) + "-" + std::to_string(::GetTickCount64()));
};

}  // namespace quorvex
