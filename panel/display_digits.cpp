#include "panel/display_digits.h"

#include "panel/display_elements.h"

namespace quorvex {
namespace {

constexpr int Nibble(PackedTime time, int index) { return static_cast<int>(time >> (4 * index) & 0xFU); }

constexpr PackedTime TwoDigits(std::int64_t value, int index) {
  return static_cast<PackedTime>(value % 10) << (4 * index) | static_cast<PackedTime>(value / 10 % 10)
                                                                  << (4 * index + 4);
}

constexpr std::array<int, 6> Pairs(int first, int second, int third) {
  return {first / 10, first % 10, second / 10, second % 10, third / 10, third % 10};
}

}  // namespace

std::array<int, 3> NumberDigits(int number) {
  std::array<int, 3> digits{kBlankDigit, kBlankDigit, kBlankDigit};
  if (number <= 0 || number > 999) return digits;
  digits[2] = number % 10;
  if (number >= 10) digits[1] = number / 10 % 10;
  if (number >= 100) digits[0] = number / 100;
  return digits;
}

TimeDigits UnpackTime(PackedTime time) {
  const std::array<int, 6> digits{Nibble(time, 1), Nibble(time, 0), Nibble(time, 3),
                                  Nibble(time, 2), Nibble(time, 5), Nibble(time, 4)};
  return {digits, Nibble(time, 6), digits[5] != kBlankDigit};
}

PackedTime PackTime(int hours, int minutes, int seconds) {
  return TwoDigits(hours, 0) | TwoDigits(minutes, 2) | TwoDigits(seconds, 4);
}

std::int64_t PackDisplayTime(std::int64_t time, PackedTime& packed) {
  const std::int64_t tenths = time / 1'000'000;
  const std::int64_t seconds = tenths / 10;
  packed = (packed & 0xF0000000U) | static_cast<PackedTime>(tenths % 10) << 24 | TwoDigits(seconds % 60, 4) |
           TwoDigits(seconds / 60 % 60, 2) | TwoDigits(seconds / 3600, 0);
  return tenths;
}

ClockDigits ClockFor(int hour, int minute, int second) {
  return {Pairs(hour >= 13 ? hour - 12 : hour, minute, second), hour >= 12};
}

}  // namespace quorvex
