#include "platform/common/shared_file.h"

#include <shlobj.h>

namespace quorvex {
namespace {

UniqueHandle MapFile(const wchar_t* name, std::size_t bytes) {
  const DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE;
  const UniqueHandle file =
      OwnFile(::CreateFileW(SharedFilePath(name).c_str(), GENERIC_READ | GENERIC_WRITE, share, nullptr,
                            OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) return {};
  return UniqueHandle(
      ::CreateFileMappingW(file.Get(), nullptr, PAGE_READWRITE, 0, static_cast<DWORD>(bytes), nullptr));
}

}  // namespace

std::wstring SharedFilePath(const wchar_t* name) {
  wchar_t folder[MAX_PATH] = L"";
  if (FAILED(::SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA | CSIDL_FLAG_CREATE, nullptr, 0, folder)))
    return {};
  const std::wstring ours = std::wstring(folder) + L"\\Quorvex";
  ::CreateDirectoryW(ours.c_str(), nullptr);
  return ours + L"\\" + name;
}

SharedFile::SharedFile(const wchar_t* name, std::size_t bytes) : mapping(MapFile(name, bytes)) {
  if (mapping)
    view = Unique<void*, EndView>(::MapViewOfFile(mapping.Get(), FILE_MAP_ALL_ACCESS, 0, 0, bytes));
}

}  // namespace quorvex
