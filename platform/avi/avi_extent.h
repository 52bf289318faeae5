// How much of a file is its movie: a capture file has been made larger beforehand.
#pragma once

#include <optional>

#include "platform/avi/byte_file.h"

namespace quorvex {

// The bytes from the beginning to the end of the movie's last part. Nothing when the file is no AVI file, or
// its movie has not been finished.
std::optional<std::uint64_t> MovieBytes(ByteSource& file);

}  // namespace quorvex
