// What languages are called: the names of the two-letter codes that discs give their streams.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace quorvex {

inline constexpr char kUnknownLanguage[] = "Unknown";

// Puts the English name of an ISO 639 code in lower case ("de") into `name`, kUnknownLanguage for a code that
// is not known. Answers whether it is.
bool LanguageNameFromCode(std::string_view code, std::string& name);

// The name of the language in a stream's attributes as the disc holds them: its code in either case is in
// bytes 2 and 3. At least four bytes.
std::string LanguageInAttributes(std::span<const std::uint8_t> attributes);

}  // namespace quorvex
