#include "base/number_list.h"

#include "base/text.h"

namespace quorvex {

std::vector<int> ParseNumberList(std::string_view text, std::size_t limit) {
  std::vector<int> numbers;
  while (!text.empty() && numbers.size() < limit) {
    const std::size_t end = std::min(text.find(' '), text.size());
    if (const int number = LeadingNumber(text.substr(0, end)); number != 0) numbers.push_back(number);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return numbers;
}

std::string FormatNumberList(std::span<const int> numbers) {
  std::string text;
  for (const int number : numbers) text += std::to_string(number) + ' ';
  return text;
}

}  // namespace quorvex
