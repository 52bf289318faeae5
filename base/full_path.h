// Paths as users write them on a command line.
#pragma once

#include <string>

namespace quorvex {

// The full path of a file by a relative or full Windows path or, under Wine, a Unix path (UTF-8 each, as the
// process's code page must be). Empty when it is too long. Nobody looks whether there is such a file.
std::string FullPath(const std::string& name);

}  // namespace quorvex
