#include "devices/dvd/render_report.h"

#include <algorithm>

namespace quorvex {
namespace {

std::string StreamLines(const RenderFindings& findings) {
  if (findings.streamsFailed <= 0) return {};
  std::string lines = "* " + std::to_string(findings.streamsFailed) + " out of " +
                      std::to_string(findings.streams) + " DVD-Video streams failed to render properly\n";
  if ((findings.failedKinds & 1U) != 0) lines += "    - video stream\n";
  if ((findings.failedKinds & 2U) != 0) lines += "    - audio stream\n";
  if ((findings.failedKinds & 4U) != 0) lines += "    - subpicture stream\n";
  return lines;
}

std::string AllLines(const RenderFindings& findings) {
  std::string lines = StreamLines(findings);
  if (findings.overlayError) lines += "* " + *findings.overlayError + "\n";
  if (findings.volumeInvalid) {
    lines += "* Specified DVD-Video volume was invalid\n";
  } else if (findings.volumeUnknown) {
    lines += "* No valid DVD-Video volume could be located\n";
  }
  if (findings.noCaptionsIn) lines += "* The video decoder doesn't produce closed caption data\n";
  if (findings.noCaptionsOut) lines += "* Decoded closed caption data not rendered properly\n";
  return lines;
}

}  // namespace

std::size_t WriteRenderReport(const RenderFindings& findings, std::span<char> text) {
  const std::string lines = AllLines(findings);
  const std::size_t size = std::min(lines.size(), text.size());
  if (size == 0) return 0;
  std::copy_n(lines.begin(), size - 1, text.begin());
  text[size - 1] = '\0';
  return size;
}

}  // namespace quorvex
