// The bytes of files.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace quorvex {

// Everything that an open file holds; nothing when it is larger than `limit` bytes or cannot be read (also
// when `file` is null).
std::optional<std::string> ReadAll(HANDLE file, LONGLONG limit);

}  // namespace quorvex
