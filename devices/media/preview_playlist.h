// The temporary play list: the files that were picked, dropped or named last.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quorvex {

// Replaces the temporary play list by these files, in this order, with the entries of M3U files in their
// places. Answers its title, which also becomes `currentPlaylist`; when the store cannot be written, nothing:
// all is as before then, and the display says why.
std::string BuildPreviewPlaylist(std::span<const std::string> paths);

// The same for the result buffer of the file dialog (SelectedPaths).
std::string BuildPreviewPlaylist(std::string_view selection);

// Appends the entries of an M3U file to those of a temporary play list; none when it cannot be opened.
void ImportM3UToPreview(const std::string& path, std::vector<std::string>& entries);

}  // namespace quorvex
