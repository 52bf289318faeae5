// The time that the performance counter tells.
#pragma once

#include <windows.h>

#include "platform/common/media_time.h"

namespace quorvex {

inline MediaTime CounterTime() {
  LARGE_INTEGER frequency{};
  LARGE_INTEGER counter{};
  ::QueryPerformanceFrequency(&frequency);
  ::QueryPerformanceCounter(&counter);
  const std::int64_t whole = counter.QuadPart / frequency.QuadPart;
  return whole * kSecond + counter.QuadPart % frequency.QuadPart * kSecond / frequency.QuadPart;
}

}  // namespace quorvex
