// The media files that the platform is told to open with the media source.
#pragma once

#include <vector>

#include "platform/common/com_server.h"

namespace quorvex {

// The values below Media Type by which `source` is found for these files: by their content alone.
std::vector<ClassesValue> FileTypeValues(const CLSID& source);

}  // namespace quorvex
