// What the platform's file dialog hands out when several files may be picked.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quorvex {

// The paths that a result buffer holds: one path; or a folder and the names in it, each ended by a zero byte,
// the last by two. Without any, none.
std::vector<std::string> SelectedPaths(std::string_view selection);

// Whether a result buffer holds a whole selection, and not one that was cut off where the buffer ends.
bool IsWholeSelection(std::string_view selection);

}  // namespace quorvex
