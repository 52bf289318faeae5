// The card's formats as media types.
#pragma once

#include <optional>

#include "platform/common/media_type.h"
#include "platform/tv/capture_format.h"

namespace quorvex {

MediaType TypeOf(const CaptureFormat& format);

// The format that a type describes; a rate that it leaves open is `usual`. None when a card cannot do it.
std::optional<CaptureFormat> FormatOf(const AM_MEDIA_TYPE& type, MediaTime usual);

}  // namespace quorvex
