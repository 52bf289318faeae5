// What the measuring programs share: clocks, and a look at the screen.
#pragma once

#include <windows.h>

#include <cstdint>

#include "tests/support/pump.h"

namespace quorvex {

inline constexpr DWORD kBenchLimitMs = 10'000;

// The time, from any beginning.
inline double Milliseconds() {
  LARGE_INTEGER now{};
  LARGE_INTEGER frequency{};
  ::QueryPerformanceFrequency(&frequency);
  ::QueryPerformanceCounter(&now);
  return static_cast<double>(now.QuadPart) * 1e3 / static_cast<double>(frequency.QuadPart);
}

// The processor time that this process has taken so far, in milliseconds.
inline double CpuMs() {
  FILETIME ignored{};
  FILETIME kernel{};
  FILETIME user{};
  ::GetProcessTimes(::GetCurrentProcess(), &ignored, &ignored, &kernel, &user);
  const auto ticks = [](const FILETIME& time) {
    return static_cast<double>(static_cast<std::uint64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime);
  };
  return (ticks(kernel) + ticks(user)) / 10000;
}

inline POINT MiddleOf(HWND window) {
  RECT area{};
  ::GetWindowRect(window, &area);
  return {(area.left + area.right) / 2, (area.top + area.bottom) / 2};
}

// Waits until the screen is light, or dark, at a place.
inline bool BecomesLight(POINT place, bool light = true) {
  const HDC screen = ::GetDC(nullptr);
  const bool became = PumpUntil(
      [&] { return (GetGValue(::GetPixel(screen, place.x, place.y)) > 128) == light; }, kBenchLimitMs);
  ::ReleaseDC(nullptr, screen);
  return became;
}

}  // namespace quorvex
