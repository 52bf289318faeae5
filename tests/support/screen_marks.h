// Reads off the screen which channel the virtual TV card's picture shows.
#pragma once

#include <windows.h>

#include <cstdint>
#include <vector>

#include "tests/support/disc_marks.h"

namespace quorvex {

// What can be read while a short text lies over the picture's right corner.
struct ScreenMarks {
  int input = -1;    // 0 the tuner, 255 noise
  int channel = -1;  // without what is above 63
  friend bool operator==(const ScreenMarks&, const ScreenMarks&) = default;
};

// A part of the screen, 32 bits a pixel, the top line first.
inline std::vector<std::uint8_t> ScreenPixels(const RECT& part) {
  const int width = part.right - part.left;
  const int height = part.bottom - part.top;
  BITMAPINFO info{};
  info.bmiHeader = {sizeof(BITMAPINFOHEADER), width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  const HDC screen = ::GetDC(nullptr);
  const HDC memory = ::CreateCompatibleDC(screen);
  void* bits = nullptr;
  const HBITMAP bitmap = ::CreateDIBSection(screen, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  const HGDIOBJ before = ::SelectObject(memory, bitmap);
  ::BitBlt(memory, 0, 0, width, height, screen, part.left, part.top, SRCCOPY);
  ::GdiFlush();
  const auto* bytes = static_cast<const std::uint8_t*>(bits);
  std::vector<std::uint8_t> pixels(bytes, bytes + static_cast<std::size_t>(width) * height * 4);
  ::SelectObject(memory, before);
  ::DeleteObject(bitmap);
  ::DeleteDC(memory);
  ::ReleaseDC(nullptr, screen);
  return pixels;
}

// The marks of the picture that a window shows.
inline ScreenMarks ReadScreenMarks(HWND window) {
  RECT place{};
  ::GetClientRect(window, &place);
  ::MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&place), 2);
  const int width = place.right - place.left;
  const int height = place.bottom - place.top;
  if (width <= 0 || height <= 0) return {};
  // The two rows of blocks are the upper eighth.
  RECT part = place;
  part.bottom = place.top + height / 8;
  std::vector<std::uint8_t> pixels = ScreenPixels(part);
  const PictureView view{pixels.data(), static_cast<std::ptrdiff_t>(width) * 4, width, height};
  const int row = BlockRow(view, 1);
  return {row & 0xFF, row >> 8 & 0x3F};
}

}  // namespace quorvex
