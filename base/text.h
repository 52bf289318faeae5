// Small text helpers: UTF-8 characters, blanks, case, leading numbers.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quorvex {

// What the platform's private-profile functions take off both ends of a value.
constexpr bool IsBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r') || c == '\x1a'; }

// `text` without the blanks at both ends.
std::string_view Trimmed(std::string_view text);

// At most the first `limit` characters (code points) of UTF-8 text; a byte that belongs to none counts as
// one.
std::string_view FirstCharacters(std::string_view text, std::size_t limit);

// Whether all of `text` is well-formed UTF-8.
bool IsUtf8(std::string_view text);

// Whether two names are the same without regard to the case of the letters A to Z.
bool EqualNoCase(std::string_view a, std::string_view b);

// The number formed by the leading decimal digits; 0 when there are none or the number exceeds 2^31 - 1.
int LeadingNumber(std::string_view text);

}  // namespace quorvex
