// Text as the platform's wide functions take it.
#pragma once

#include <string>
#include <string_view>

namespace quorvex {

// Text of the process's code page in UTF-16.
std::wstring WideText(std::string_view text);

}  // namespace quorvex
