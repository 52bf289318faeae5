// Files as they fall on a window.
#pragma once

#include <windows.h>

#include <shlobj.h>

#include <algorithm>
#include <string>
#include <vector>

namespace quorvex {

// What WM_DROPFILES brings of these files; whoever gets it frees it.
inline HGLOBAL DropOf(const std::vector<std::string>& paths) {
  std::string names;
  for (const std::string& path : paths) names += path + '\0';
  names += '\0';
  const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(DROPFILES) + names.size());
  auto* const drop = static_cast<DROPFILES*>(::GlobalLock(memory));
  drop->pFiles = sizeof(DROPFILES);
  std::copy(names.begin(), names.end(), reinterpret_cast<char*>(drop + 1));
  ::GlobalUnlock(memory);
  return memory;
}

}  // namespace quorvex
