// The streams of a capture graph as an AVI file describes them.
#pragma once

#include <windows.h>

#include <strmif.h>

#include <optional>

#include "platform/avi/avi_movie.h"

namespace quorvex {

struct MuxFormat {
  AviStream stream;
  std::optional<std::uint8_t> silence;  // the byte that plain sound is silent with
};

// Nothing for what an AVI file does not hold: pictures need FORMAT_VideoInfo, sound FORMAT_WaveFormatEx.
std::optional<MuxFormat> MuxFormatOf(const AM_MEDIA_TYPE& type);

}  // namespace quorvex
