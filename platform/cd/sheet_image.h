// Images that a text sheet describes: raw and WAV files beside it.
#pragma once

#include <filesystem>

#include "platform/cd/disc_image.h"

namespace quorvex {

// Opens a CUE or TOC sheet. Names in it are taken relative to its folder.
OpenedImage OpenCueImage(const std::filesystem::path& sheet);
OpenedImage OpenTocImage(const std::filesystem::path& sheet);

}  // namespace quorvex
