#include "devices/tv/capture_disk.h"

#include <commdlg.h>

#include "base/full_path.h"
#include "base/handles.h"
#include "devices/tv/capture_size.h"
#include "devices/tv/name_guard.h"
#include "panel/status_display.h"

namespace quorvex {
namespace {

// More than is taken, so that a path that is too long is seen as such: Wine cuts off what does not fit.
constexpr std::size_t kFieldSize = 1024;

UniqueHandle OpenForReading(const std::string& path, DWORD share) {
  return OwnFile(::CreateFileA(path.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr));
}

// Whether anybody has the file open: what a player plays must not be written over.
bool IsInUse(const std::string& path) {
  return !OpenForReading(path, 0) && ::GetLastError() == ERROR_SHARING_VIOLATION;
}

const char* Objection(const std::string& path) {
  if (path.size() > kLongestCapturePath) return "The path is too long";
  return IsInUse(path) ? "The file is in use" : nullptr;
}

}  // namespace

bool ChooseCaptureFileName(HWND owner, std::string& path) {
  const std::string folder = FolderOf(path);
  std::string name = path;
  name.resize(kFieldSize);
  OPENFILENAMEA dialog{};
  dialog.lStructSize = sizeof dialog;
  dialog.hwndOwner = owner;
  dialog.lpstrFilter = "Microsoft AVI\0*.avi\0";
  dialog.lpstrFile = name.data();
  dialog.nMaxFile = kFieldSize;
  dialog.lpstrInitialDir = folder.empty() ? nullptr : folder.c_str();
  dialog.lpstrTitle = "Set Capture File";
  dialog.Flags = OFN_HIDEREADONLY | OFN_PATHMUSTEXIST | OFN_NOREADONLYRETURN;
  const NameGuard guard;
  if (::GetOpenFileNameA(&dialog) == FALSE) return false;
  name.resize(name.find('\0'));
  const std::string chosen = WithExtension(name);
  const char* const objection = Objection(chosen);
  if (objection != nullptr) {
    SetDisplayText(objection);
    return false;
  }
  path = chosen;
  return true;
}

bool IsThere(const std::string& path) {
  const DWORD attributes = ::GetFileAttributesA(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

std::int64_t GetFileSize64(const std::string& path) {
  const UniqueHandle file = OpenForReading(path, FILE_SHARE_READ);
  LARGE_INTEGER size{};
  return file && ::GetFileSizeEx(file.Get(), &size) != FALSE ? size.QuadPart : 0;
}

std::optional<std::int64_t> GetFreeDiskSpaceKB(const std::string& path) {
  const std::string full = FullPath(path.empty() ? "C:\\" : path);
  ULARGE_INTEGER free{};
  if (full.empty() || ::GetDiskFreeSpaceExA(RootOf(full).c_str(), nullptr, nullptr, &free) == FALSE)
    return std::nullopt;
  return static_cast<std::int64_t>(free.QuadPart >> 10);
}

}  // namespace quorvex
