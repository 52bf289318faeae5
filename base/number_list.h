// Lists of numbers as the stores hold them: each number followed by one blank, "3 1 2 ".
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quorvex {

// The numbers of `text`, split at runs of blanks. A piece counts by its leading digits; pieces without any,
// and zeros, are left out. At most `limit` numbers are taken.
std::vector<int> ParseNumberList(std::string_view text, std::size_t limit);

// The numbers in decimal, each followed by one blank.
std::string FormatNumberList(std::span<const int> numbers);

}  // namespace quorvex
