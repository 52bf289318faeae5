// The characters of line 21.
#pragma once

#include <cstdint>

namespace quorvex {

inline constexpr char32_t kSolidBlock = U'\u2588';

// Of a single byte (0x20 to 0x7F).
char32_t Line21Character(std::uint8_t code);
// Of the second byte (0x30 to 0x3F) of a special character; 0 for its transparent space.
char32_t Line21SpecialCharacter(std::uint8_t code);
// Of an extended character: the set (0 or 1) and the second byte (0x20 to 0x3F).
char32_t Line21ExtendedCharacter(int set, std::uint8_t code);

}  // namespace quorvex
