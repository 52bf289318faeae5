// Whether a disc that lies in the drive as a file or a folder is a DVD-Video disc.
#pragma once

#include <filesystem>

namespace quorvex {

// The folder that the files of such a disc lie in: `folder` itself, or VIDEO_TS in it. Empty when there is
// none.
std::filesystem::path VideoFolder(const std::filesystem::path& folder);

// Whether an image or a folder holds the table that every such disc begins with, or its copy.
bool HoldsVideoDisc(const std::filesystem::path& path);

}  // namespace quorvex
