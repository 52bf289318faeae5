#include "base/text.h"

#include <algorithm>
#include <limits>

namespace quorvex {
namespace {

// The length in bytes of the UTF-8 character that `text` begins with, 1 for a byte that begins none.
std::size_t CharacterLength(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text.front());
  std::size_t length = 1;
  if (lead >= 0xC2 && lead < 0xE0) length = 2;
  if (lead >= 0xE0 && lead < 0xF0) length = 3;
  if (lead >= 0xF0 && lead < 0xF5) length = 4;
  if (length > text.size()) return 1;
  const std::string_view rest = text.substr(1, length - 1);
  const bool whole = std::all_of(rest.begin(), rest.end(),
                                 [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; });
  return whole ? length : 1;
}

constexpr char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

std::string_view FirstCharacters(std::string_view text, std::size_t limit) {
  std::size_t end = 0;
  while (limit-- > 0 && end < text.size()) end += CharacterLength(text.substr(end));
  return text.substr(0, end);
}

bool IsUtf8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = CharacterLength(text);
    if (length == 1 && static_cast<unsigned char>(text.front()) >= 0x80) return false;
    text.remove_prefix(length);
  }
  return true;
}

bool EqualNoCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return Lower(x) == Lower(y); });
}

int LeadingNumber(std::string_view text) {
  long long number = 0;
  for (const char c : text) {
    if (c < '0' || c > '9') break;
    number = number * 10 + (c - '0');
    if (number > std::numeric_limits<int>::max()) return 0;
  }
  return static_cast<int>(number);
}

}  // namespace quorvex
