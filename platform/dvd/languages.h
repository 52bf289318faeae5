// Languages as discs name them (two letters) and as the platform does.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

namespace quorvex {

// 0 when the platform does not know the letters, or there are none.
LCID LanguageOfLetters(const std::string& letters);

// The letters of a language, the first in the high byte; 0 when it has none.
std::uint16_t LanguageLetters(LCID language);

}  // namespace quorvex
