// A number typed digit by digit on the keypad.
#pragma once

#include <cstdint>

namespace quorvex {

// The number typed so far with one more digit behind it.
constexpr std::int32_t WithDigit(std::int32_t number, int digit) { return number * 10 + digit; }

// Whether a number of at least two digits is complete: it has as many digits as the highest valid number can
// have (two below 100, three from there), or no further digit could give a valid one.
constexpr bool EntryIsComplete(std::int32_t number, std::int32_t highest) {
  return (highest < 100 && number >= 10) || (highest >= 100 && number >= 100) || number * 10 > highest;
}

static_assert(EntryIsComplete(12, 99) && !EntryIsComplete(12, 125) && EntryIsComplete(13, 125));

}  // namespace quorvex
