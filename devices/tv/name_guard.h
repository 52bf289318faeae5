// Keeps the platform's dialog for files from names that are too long: Wine's writes them past the end of its
// buffers, and the program is gone.
#pragma once

#include <windows.h>

namespace quorvex {

// While it lives, dialogs for files that this thread opens do not take a name by which the path would be
// longer than that of a capture file may be; the text line says so, and the dialog stays open.
class NameGuard {
 public:
  NameGuard();
  NameGuard(const NameGuard&) = delete;
  NameGuard& operator=(const NameGuard&) = delete;
  ~NameGuard();

 private:
  static LRESULT CALLBACK OnWindow(int code, WPARAM wParam, LPARAM lParam);
  static LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                    DWORD_PTR data);

  HHOOK hook;
};

}  // namespace quorvex
