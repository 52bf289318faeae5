#include "platform/dvd/languages.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace quorvex {
namespace {

constexpr DWORD kNeutralNames = 0x08000000;  // LOCALE_ALLOW_NEUTRAL_NAMES

// Discs are older than these letters' last change.
struct OldLetters {
  const char* before;
  const wchar_t* now;
};
constexpr OldLetters kOld[] = {{"iw", L"he"}, {"in", L"id"}, {"ji", L"yi"}};

std::wstring Name(const std::string& letters) {
  const auto old = std::find_if(std::begin(kOld), std::end(kOld),
                                [&](const OldLetters& one) { return letters == one.before; });
  return old != std::end(kOld) ? std::wstring(old->now) : std::wstring(letters.begin(), letters.end());
}

}  // namespace

LCID LanguageOfLetters(const std::string& letters) {
  if (letters.size() != 2) return 0;
  const LCID found = ::LocaleNameToLCID(Name(letters).c_str(), kNeutralNames);
  // Letters that no language has get a number that stands for nothing.
  const bool isKnown = found != 0 && PRIMARYLANGID(LANGIDFROMLCID(found)) != LANG_NEUTRAL &&
                       found != LOCALE_CUSTOM_UNSPECIFIED;
  return isKnown ? MAKELCID(MAKELANGID(PRIMARYLANGID(LANGIDFROMLCID(found)), SUBLANG_NEUTRAL), SORT_DEFAULT)
                 : 0;
}

std::uint16_t LanguageLetters(LCID language) {
  std::array<wchar_t, 9> letters{};
  const int length =
      ::GetLocaleInfoW(language, LOCALE_SISO639LANGNAME, letters.data(), static_cast<int>(letters.size()));
  return length == 3 ? static_cast<std::uint16_t>(letters[0] << 8 | letters[1]) : std::uint16_t{0};
}

}  // namespace quorvex
