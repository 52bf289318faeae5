// Lets a window take files that are dragged by OLE, as the file view of an Open File dialog does it: they
// arrive as the same WM_DROPFILES that file managers send. (Windows does that by itself for windows that
// accept files, Wine does not.)
#pragma once

#include <windows.h>

namespace quorvex {

// Registers a window for as long as this object lives; it must end before the window does.
class FileDrops {
 public:
  explicit FileDrops(HWND receiver);
  FileDrops(const FileDrops&) = delete;
  FileDrops& operator=(const FileDrops&) = delete;
  ~FileDrops();

 private:
  HWND window;
};

}  // namespace quorvex
