#include "devices/dvd/language.h"

#include <algorithm>
#include <array>

namespace quorvex {
namespace {

struct Language {
  std::string_view code;
  std::string_view name;
};

constexpr std::array<Language, 10> kLanguages{{
    {"de", "German"},
    {"en", "English"},
    {"es", "Spanish"},
    {"fr", "French"},
    {"ja", "Japanese"},
    {"ko", "Korean"},
    {"nl", "Dutch"},
    {"pt", "Portuguese"},
    {"sv", "Swedish"},
    {"zh", "Chinese"},
}};

constexpr std::uint8_t kLowerCase = 0x20;

}  // namespace

bool LanguageNameFromCode(std::string_view code, std::string& name) {
  const auto found = std::find_if(kLanguages.begin(), kLanguages.end(),
                                  [&](const Language& language) { return language.code == code; });
  name = found != kLanguages.end() ? found->name : kUnknownLanguage;
  return found != kLanguages.end();
}

std::string LanguageInAttributes(std::span<const std::uint8_t> attributes) {
  std::string code;
  for (const std::uint8_t letter : attributes.subspan(2, 2)) code += static_cast<char>(letter | kLowerCase);
  std::string name;
  LanguageNameFromCode(code, name);
  return name;
}

}  // namespace quorvex
