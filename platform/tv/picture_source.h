// Where a card's pins take their pictures from, and the format that was set.
#pragma once

#include <windows.h>

#include <array>
#include <atomic>
#include <mutex>

#include "platform/tv/capture_format.h"
#include "platform/tv/color_adjustment.h"
#include "platform/tv/reception.h"

namespace quorvex {

class PictureSource {
 public:
  explicit PictureSource(Reception& received) : reception(received) {}

  Scene Seen() { return reception.Now(); }

  // The time of day in hundredths of a second, which the pictures show.
  static std::int64_t Clock();

  [[nodiscard]] CaptureFormat Format() {
    const std::scoped_lock guard(lock);
    return format;
  }
  void SetFormat(const CaptureFormat& wanted) {
    const std::scoped_lock guard(lock);
    format = wanted;
  }
  [[nodiscard]] ColorAdjustment Adjustment() {
    const std::scoped_lock guard(lock);
    return adjustment;
  }
  void Adjust(std::size_t control, int value) {
    const std::scoped_lock guard(lock);
    adjustment.values.at(control) = value;
  }

 private:
  Reception& reception;
  std::mutex lock;  // guards what follows
  CaptureFormat format;
  ColorAdjustment adjustment;
};

inline std::int64_t PictureSource::Clock() {
  SYSTEMTIME now{};
  ::GetLocalTime(&now);
  return ((now.wHour * 60 + now.wMinute) * 60 + now.wSecond) * 100 + now.wMilliseconds / 10;
}

}  // namespace quorvex
