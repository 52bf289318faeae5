// Play-list files on disk.
#pragma once

#include <string>

namespace quorvex {

// The text of an M3U file (M3UText); empty when it cannot be opened or is larger than any play list.
std::string ReadM3UFile(const std::string& path);

}  // namespace quorvex
