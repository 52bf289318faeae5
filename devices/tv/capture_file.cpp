// The capture file: its room, and the copy that the user keeps.
#include <windows.h>

#include "base/capture_recovery_interface.h"
#include "base/text.h"
#include "base/wide_text.h"
#include "devices/tv/capture_disk.h"
#include "devices/tv/tv_device.h"
#include "panel/accessible_text.h"
#include "panel/answer_watch.h"
#include "panel/main_window.h"
#include "panel/status_display.h"

namespace quorvex {
namespace {

constexpr DWORDLONG kBytesPerMegabyte = 1'048'576;

const char* SavedText(HRESULT result) {
  if (result == S_OK) return "Capture file saved";
  return result == S_FALSE ? "Capture file save aborted" : "Capture file save ERROR";
}

}  // namespace

bool CTVDevice::SetCaptureFile(const std::string& path, std::uint16_t megabytes) {
  captureMegabytes = megabytes;
  capture.file = path;
  return ApplyCaptureFile();
}

bool CTVDevice::ApplyCaptureFile() {
  if (!AllocateCaptureFile()) return false;
  if (fileWriter) fileWriter->SetFileName(WideText(capture.file).c_str(), nullptr);
  return true;
}

bool CTVDevice::AllocateCaptureFile() {
  if (capture.file.empty()) return false;
  const LongWork filling;
  const HRESULT result =
      builder->AllocCapFile(WideText(capture.file).c_str(), captureMegabytes * kBytesPerMegabyte);
  return !ReportErrorIf(result, "Failed to pre-allocate capture file space");
}

bool CTVDevice::SaveCaptureFile(HWND owner) {
  std::string chosen;
  if (!ChooseCaptureFileName(owner, chosen)) return false;
  SetDisplayText("Saving capture file...");
  std::wstring from = WideText(capture.file);
  std::wstring to = WideText(chosen);
  const LongWork copying;
  const HRESULT result = EqualNoCase(chosen, capture.file)
                             ? E_INVALIDARG
                             : builder->CopyCaptureFile(from.data(), to.data(), TRUE, nullptr);
  SetDisplayText(SavedText(result));
  return result == S_OK;
}

// A recording that was cut off (the power, a crash) becomes a whole file; the text line then tells its
// length.
void CTVDevice::FinishLastRecording() {
  const auto recovery = builder.As<ICaptureRecovery>();
  if (!recovery || capture.file.empty()) return;
  LONGLONG length = 0;
  const LongWork mending;
  const HRESULT result = recovery->Recover(WideText(capture.file).c_str(), &length);
  PackedTime time = 0;
  PackDisplayTime(length, time);
  if (result == S_OK) notice = "Recovered " + TimeAsText(time);
  if (FAILED(result)) notice = "Cannot recover the recording";
}

}  // namespace quorvex
