// Opening disc images of every kind.
#pragma once

#include <string>

#include "platform/cd/disc_image.h"

namespace quorvex {

// Opens an image by its path in UTF-8: CUE, TOC and NRG files, a BIN file beside its CUE sheet, an ISO image,
// or a folder with a DVD's VIDEO_TS, or that folder itself. ISO images and DVDs are discs of one data track.
// The error says what is wrong, without the file's name.
OpenedImage OpenDiscImage(const std::string& utf8);

}  // namespace quorvex
