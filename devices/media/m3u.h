// M3U play lists: a path a line, remarks behind a semicolon. Lines are taken as they stand: relative paths
// stay relative, and lines that begin with "#" are entries like any other.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quorvex {

// Whether a path's extension is ".m3u", in whatever case.
bool IsM3U(std::string_view path);

// The text of a play list as UTF-8: without a byte order mark; bytes that are no UTF-8 are taken for Windows'
// Western European characters.
std::string M3UText(std::string bytes);

// The entries of M3UText for an album: every line but empty ones and remarks. Lines of more than 259
// characters are taken in pieces, each as a line of its own.
std::vector<std::string> AlbumEntriesOfM3U(std::string_view text);

// The same for the temporary play list, which also leaves out a single character at the very end that no line
// end follows.
std::vector<std::string> PreviewEntriesOfM3U(std::string_view text);

}  // namespace quorvex
