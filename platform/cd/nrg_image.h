// Nero images, read by libcdio.
#pragma once

#include <string>

#include "platform/cd/disc_image.h"

namespace quorvex {

// `path` in UTF-8.
OpenedImage OpenNrgImage(const std::string& path);

}  // namespace quorvex
