// Times of a DVD: ticks of 90 kHz, the decimal times of its tables, and the packed time codes that
// applications are told.
#pragma once

#include <cstdint>
#include <optional>

#include "platform/common/media_time.h"

namespace quorvex {

using DvdTicks = std::int64_t;  // 90 kHz

constexpr DvdTicks kTicksPerSecond = 90'000;

constexpr MediaTime ToMediaTime(DvdTicks ticks) { return Rescale(ticks, kSecond, kTicksPerSecond); }
constexpr DvdTicks ToDvdTicks(MediaTime time) { return Rescale(time, kTicksPerSecond, kSecond); }

// How the pictures of a time code are counted; the number is the code's own.
enum class FrameCount : std::uint8_t { k25 = 1, k30 = 3 };

constexpr int FramesPerSecond(FrameCount count) { return count == FrameCount::k25 ? 25 : 30; }

// A packed time code, the lowest nibble first: hours' units and tens, minutes', seconds', frames' units, then
// two bits for the frames' tens and two for how frames are counted. Beyond 99 hours it stands still.
constexpr std::uint32_t EncodeTimeCode(DvdTicks ticks, FrameCount count) {
  constexpr std::int64_t kMostSeconds = (99 * 60 + 59) * 60 + 59;
  if (ticks < 0) ticks = 0;
  const std::int64_t whole = ticks / kTicksPerSecond;
  const std::int64_t seconds = whole > kMostSeconds ? kMostSeconds : whole;
  const auto frames = ticks % kTicksPerSecond * FramesPerSecond(count) / kTicksPerSecond;
  const auto pair = [](std::int64_t value) {
    return static_cast<std::uint32_t>(value % 10 | (value / 10 % 10) << 4);
  };
  return pair(seconds / 3600) | pair(seconds / 60 % 60) << 8 | pair(seconds % 60) << 16 |
         pair(frames) << 24 | static_cast<std::uint32_t>(count) << 30;
}

// The time of a packed code; none when a digit of it is no decimal one. Without a way of counting frames
// these are left out.
constexpr std::optional<DvdTicks> DecodeTimeCode(std::uint32_t packed) {
  const auto digit = [packed](int nibble, std::uint32_t mask = 15U) {
    return static_cast<std::int64_t>(packed >> (4 * nibble) & mask);
  };
  for (int nibble = 0; nibble < 7; ++nibble)
    if (digit(nibble) > 9) return std::nullopt;
  const std::int64_t seconds = ((digit(1) * 10 + digit(0)) * 60 + digit(3) * 10 + digit(2)) * 60 +
                               digit(5) * 10 + digit(4);
  const std::uint32_t count = packed >> 30;
  const std::int64_t frames = digit(7, 3U) * 10 + digit(6);
  if (count != 1 && count != 3) return seconds * kTicksPerSecond;
  return seconds * kTicksPerSecond + frames * kTicksPerSecond / FramesPerSecond(static_cast<FrameCount>(count));
}

// A time of the disc's tables: decimal hours, minutes, seconds, and frames with the way of counting in the
// two highest bits.
struct DiscTime {
  std::uint8_t hours = 0;
  std::uint8_t minutes = 0;
  std::uint8_t seconds = 0;
  std::uint8_t frames = 0;

  [[nodiscard]] constexpr FrameCount Count() const {
    return (frames >> 6) == 1 ? FrameCount::k25 : FrameCount::k30;
  }
  [[nodiscard]] constexpr DvdTicks Ticks() const {
    const auto decimal = [](int bcd) { return std::int64_t{bcd >> 4} * 10 + (bcd & 15); };
    const std::int64_t whole = (decimal(hours) * 60 + decimal(minutes)) * 60 + decimal(seconds);
    return whole * kTicksPerSecond + decimal(frames & 0x3F) * kTicksPerSecond / FramesPerSecond(Count());
  }
};

}  // namespace quorvex
