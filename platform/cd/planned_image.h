// Images whose description says from which file each sector comes: sheets (CUE, TOC) with raw and WAV files
// beside them, and NRG images, which hold both.
#pragma once

#include <filesystem>

#include "platform/cd/disc_image.h"

namespace quorvex {

// Opens a CUE or TOC sheet. Names in it are taken relative to its folder.
OpenedImage OpenCueImage(const std::filesystem::path& sheet);
OpenedImage OpenTocImage(const std::filesystem::path& sheet);

OpenedImage OpenNrgImage(const std::filesystem::path& path);

}  // namespace quorvex
