#include "setup/enabling.h"

#include <algorithm>
#include <array>

#include "resources/ids.h"

namespace quorvex {

SetupPageKind FirstPage(const SetupSubject& subject) {
  switch (subject.device) {
    case DeviceType::kTv: return subject.hasTuner ? SetupPageKind::kTv : SetupPageKind::kCapture;
    case DeviceType::kDvd: return SetupPageKind::kDvd;
    case DeviceType::kCd: return SetupPageKind::kCd;
    case DeviceType::kFile: return SetupPageKind::kMediaFiles;
    case DeviceType::kNone: break;
  }
  return SetupPageKind::kGeneral;
}

bool IsCapturePageFilled(const SetupSubject& subject) {
  return subject.device == DeviceType::kTv && !subject.recording;
}

std::vector<int> EnabledTvControls(const SetupSubject& subject) {
  if (subject.device != DeviceType::kTv) return {};
  std::vector<int> controls = {IDC_OPAQUE_CAPTIONS, IDC_TRANSPARENT_CAPTIONS};
  if (subject.hasTuner) controls.insert(controls.end(), {IDC_ANTENNA, IDC_CABLE, IDC_AUTO_TUNE});
  return controls;
}

std::vector<int> EnabledCaptureControls(const SetupSubject& subject) {
  if (!IsCapturePageFilled(subject)) return {};
  std::vector<int> controls = {IDC_ALLOCATE_FILE,  IDC_SAVE_CAPTURE, IDC_PROMPT_TO_SAVE, IDC_CAPTURE_AUDIO,
                               IDC_USE_FRAME_RATE, IDC_FRAME_RATE,   IDC_USE_TIME_LIMIT, IDC_TIME_LIMIT,
                               IDC_MASTER_NONE,    IDC_MASTER_AUDIO, IDC_MASTER_VIDEO};
  if (subject.recordsSound) controls.push_back(IDC_AUDIO_FORMAT);
  if (subject.hasSourceDialog) controls.push_back(IDC_VIDEO_SOURCE);
  if (subject.hasFormatDialog) controls.push_back(IDC_VIDEO_FORMAT);
  if (subject.hasDisplayDialog) controls.push_back(IDC_VIDEO_DISPLAY);
  return controls;
}

std::vector<int> EnabledCdControls(const SetupSubject& subject) {
  if (subject.device != DeviceType::kCd) return {};
  return {IDC_EDIT_PLAYLIST};
}

bool EnablesApplyOnCapturePage(int control) {
  constexpr std::array kActAtOnce = {IDC_ALLOCATE_FILE, IDC_SAVE_CAPTURE,  IDC_AUDIO_FORMAT,
                                     IDC_VIDEO_SOURCE,  IDC_VIDEO_FORMAT,  IDC_VIDEO_DISPLAY,
                                     IDC_CAPTURE_AUDIO, IDC_USE_FRAME_RATE};
  return std::find(kActAtOnce.begin(), kActAtOnce.end(), control) == kActAtOnce.end();
}

}  // namespace quorvex
