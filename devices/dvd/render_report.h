// Says in words why a DVD could not be rendered whole.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>

namespace quorvex {

// What the platform found, as its record of the rendering says it.
struct RenderFindings {
  int streams = 0;
  int streamsFailed = 0;
  unsigned failedKinds = 0;  // 1 video, 2 sound, 4 subpictures, or their sum
  // The platform's text for the failure of the picture's overlay; none when it did not fail.
  std::optional<std::string> overlayError;
  bool volumeInvalid = false;
  bool volumeUnknown = false;
  bool noCaptionsIn = false;   // the video decoder gives no captions
  bool noCaptionsOut = false;  // the captions cannot be shown
};

// Writes the report into `text`, a line for every finding, without the newline of the last one, and ends it
// with a zero; what does not fit is cut off. Answers the characters written with the zero; 0 when there is
// nothing to report or no room, and then `text` stays as it is.
std::size_t WriteRenderReport(const RenderFindings& findings, std::span<char> text);

}  // namespace quorvex
