// Memory that all processes of the user share: each maps a file of the folder %LOCALAPPDATA%\Quorvex, so what
// is in it outlives the last of them.
#pragma once

#include <windows.h>

#include <string>

#include "base/handles.h"

namespace quorvex {

// A file of this name in the folder, which is made when it is not there. The folder is the user's own, and so
// are its rights.
std::wstring SharedFilePath(const wchar_t* name);

inline void EndView(void* view) { ::UnmapViewOfFile(view); }

class SharedFile {
 public:
  // `bytes` of the file; a new one begins with zeros.
  SharedFile(const wchar_t* name, std::size_t bytes);

  // Null when the file could not be mapped.
  [[nodiscard]] void* Memory() const { return view.Get(); }

 private:
  UniqueHandle mapping;
  Unique<void*, EndView> view;
};

}  // namespace quorvex
