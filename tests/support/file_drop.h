// Files as they fall on a window.
#pragma once

#include <windows.h>

#include <shlobj.h>

#include <algorithm>
#include <string>
#include <vector>

namespace quorvex {

// A drop's memory: the header, the paths, each ended by a zero, and another zero.
inline std::string DropBytes(const std::vector<std::string>& paths) {
  DROPFILES header{};
  header.pFiles = sizeof header;
  std::string bytes(reinterpret_cast<const char*>(&header), sizeof header);
  for (const std::string& path : paths) bytes += path + '\0';
  return bytes + '\0';
}

// What WM_DROPFILES brings of these files; whoever gets it frees it.
inline HGLOBAL DropOf(const std::vector<std::string>& paths) {
  const std::string bytes = DropBytes(paths);
  const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, bytes.size());
  std::copy(bytes.begin(), bytes.end(), static_cast<char*>(::GlobalLock(memory)));
  ::GlobalUnlock(memory);
  return memory;
}

}  // namespace quorvex
