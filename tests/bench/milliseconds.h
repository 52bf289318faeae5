// The clock of the measurements.
#pragma once

#include <windows.h>

namespace quorvex {

// Of the performance counter, from any moment on.
inline double Milliseconds() {
  LARGE_INTEGER now{};
  LARGE_INTEGER frequency{};
  ::QueryPerformanceFrequency(&frequency);
  ::QueryPerformanceCounter(&now);
  return static_cast<double>(now.QuadPart) * 1e3 / static_cast<double>(frequency.QuadPart);
}

}  // namespace quorvex
