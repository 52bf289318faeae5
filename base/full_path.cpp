#include "base/full_path.h"

#include <windows.h>

namespace quorvex {
namespace {

constexpr DWORD kLongestPath = 1024;

// Wine knows where a Unix path lies on its drives.
std::string DosPath(const std::string& unixPath) {
  using UnixToDos = WCHAR*(CDECL*)(const char*);
  const auto unixToDos = reinterpret_cast<UnixToDos>(reinterpret_cast<void*>(
      ::GetProcAddress(::GetModuleHandleA("kernel32.dll"), "wine_get_dos_file_name")));
  WCHAR* dos = unixToDos != nullptr ? unixToDos(unixPath.c_str()) : nullptr;
  if (dos == nullptr) return unixPath;
  char utf8[kLongestPath] = "";
  ::WideCharToMultiByte(CP_UTF8, 0, dos, -1, utf8, sizeof utf8, nullptr, nullptr);
  ::HeapFree(::GetProcessHeap(), 0, dos);
  return utf8[0] != '\0' ? utf8 : unixPath;
}

}  // namespace

std::string FullPath(const std::string& name) {
  const std::string path = name.starts_with('/') ? DosPath(name) : name;
  char full[kLongestPath] = "";
  const DWORD length = ::GetFullPathNameA(path.c_str(), sizeof full, full, nullptr);
  return length > 0 && length < sizeof full ? full : "";
}

}  // namespace quorvex
