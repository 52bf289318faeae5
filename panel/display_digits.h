// What the display's digits show: numbers, packed times and the clock, as values of elements.
#pragma once

#include <array>
#include <cstdint>

namespace quorvex {

// Hundreds, tens and units of 0..999 with leading zeros (and a zero itself) blank; outside that range all
// blank.
std::array<int, 3> NumberDigits(int number);

// A time as decimal nibbles. From the lowest: hours units, hours tens, minutes units, minutes tens, seconds
// units, seconds tens, tenths; a nibble of 0xA is a blank digit. The highest nibble is the caller's own.
using PackedTime = std::uint32_t;

inline constexpr PackedTime kBlankTime = 0x00AAAAAA;

struct TimeDigits {
  std::array<int, 6> digits;  // hours, minutes, seconds, tens before units
  int tenths;
  bool colons;  // off when the seconds units are blank
};
TimeDigits UnpackTime(PackedTime time);

// Packs hours, minutes and seconds (each 0..99); tenths and the highest nibble are 0.
PackedTime PackTime(int hours, int minutes, int seconds);

// Packs a media time in 100-nanosecond units into `packed`, whose highest nibble stays; returns it in tenths
// of a second.
std::int64_t PackDisplayTime(std::int64_t time, PackedTime& packed);

// A time of day (hour 0..23) on the twelve-hour clock: midnight is 00 AM, noon 12 PM.
struct ClockDigits {
  std::array<int, 6> digits;
  bool pm;
};
ClockDigits ClockFor(int hour, int minute, int second);

}  // namespace quorvex
