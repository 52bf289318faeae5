// File names as sheets and other programs write them.
#pragma once

#include <filesystem>
#include <string_view>

namespace quorvex {

// A path from UTF-8, for the language's own file functions on every system. Text that is no UTF-8 is taken
// for Latin-1, as old sheets are written in.
std::filesystem::path PathFromUtf8(std::string_view text);

}  // namespace quorvex
