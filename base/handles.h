// Owners of Win32 handles: each closes what it holds, once.
#pragma once

#include <windows.h>

#include <utility>

namespace quorvex {

// Handle is what the platform calls it, Close the function that ends it, kNone the value that means "nothing
// held".
template <typename Handle, auto Close, Handle kNone = Handle{}>
class Unique {
 public:
  Unique() = default;
  explicit Unique(Handle owned) : handle(owned) {}
  Unique(Unique&& other) noexcept : handle(std::exchange(other.handle, kNone)) {}
  Unique& operator=(Unique&& other) noexcept {
    std::swap(handle, other.handle);
    return *this;
  }
  Unique(const Unique&) = delete;
  Unique& operator=(const Unique&) = delete;
  ~Unique() { Reset(); }

  [[nodiscard]] Handle Get() const { return handle; }
  explicit operator bool() const { return handle != kNone; }
  void Reset() {
    if (handle != kNone) Close(std::exchange(handle, kNone));
  }

 private:
  Handle handle = kNone;
};

inline void EndHandle(HANDLE handle) { ::CloseHandle(handle); }
inline void EndGdiObject(HGDIOBJ object) { ::DeleteObject(object); }
inline void EndMenu(HMENU menu) { ::DestroyMenu(menu); }
inline void EndDc(HDC dc) { ::DeleteDC(dc); }

using UniqueHandle = Unique<HANDLE, EndHandle>;
using UniqueBitmap = Unique<HBITMAP, EndGdiObject>;
using UniqueFont = Unique<HFONT, EndGdiObject>;
using UniqueBrush = Unique<HBRUSH, EndGdiObject>;
using UniquePen = Unique<HPEN, EndGdiObject>;
using UniqueMenu = Unique<HMENU, EndMenu>;
using UniqueDc = Unique<HDC, EndDc>;

// A file handle: the platform says INVALID_HANDLE_VALUE, here a null handle means that nothing is open.
inline UniqueHandle OwnFile(HANDLE file) {
  return UniqueHandle(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

// Selects a GDI object into a device context and puts the old one back.
class Selected {
 public:
  Selected(HDC into, HGDIOBJ object) : dc(into), old(::SelectObject(into, object)) {}
  Selected(const Selected&) = delete;
  Selected& operator=(const Selected&) = delete;
  ~Selected() { ::SelectObject(dc, old); }

 private:
  HDC dc;
  HGDIOBJ old;
};

}  // namespace quorvex
