// Recording: arming, the user's confirmation, the time that runs, holding and ending.
#include <windows.h>

#include <mmsystem.h>
#include <uuids.h>

#include <cstdio>
#include <limits>
#include <utility>

#include "devices/shared_state.h"
#include "devices/tv/capture_file_dialog.h"
#include "devices/tv/ready_to_record_dialog.h"
#include "devices/tv/tv_device.h"
#include "panel/control_panel.h"
#include "panel/main_window.h"
#include "panel/status_display.h"

namespace quorvex {
namespace {

constexpr UINT kRecordPeriodMs = 100;
constexpr std::int64_t kUnitsPerMs = 10'000;  // of media times
constexpr DWORD kMsPerSecond = 1000;
constexpr REFERENCE_TIME kNever = std::numeric_limits<REFERENCE_TIME>::max();

void ShowRecording(bool recording) {
  SetButtonState(kCommandRecord, recording ? ButtonLook::kLit : ButtonLook::kNormal);
  SetDisplayElement(kRecordLamp, recording ? 1 : 0);
}

// Both tell the streams of a category from when to when to flow: null is now, the largest time never.
bool LetFlow(ICaptureGraphBuilder& builder, const GUID& category) {
  REFERENCE_TIME never = kNever;
  return SUCCEEDED(builder.ControlStream(&category, nullptr, nullptr, &never, 0, 0));
}
bool HoldBack(ICaptureGraphBuilder& builder, const GUID& category) {
  REFERENCE_TIME never = kNever;
  return SUCCEEDED(builder.ControlStream(&category, nullptr, &never, nullptr, 0, 0));
}

}  // namespace

bool CTVDevice::HasCaptureFile() {
  if (!capture.file.empty()) return true;
  ReportError("Please allocate a capture file first.");
  return CaptureFileDialog(*this).Run(mainWindow);
}

// The settings go first: after a crash they tell where the recording lies.
bool CTVDevice::Record() {
  if (recording || !HasCaptureFile()) return false;
  SaveSettings();
  StopGraph();
  RemoveRenderedFilters();
  const bool begun = RenderCapture() && BeginRecording();
  recording = true;
  if (!begun) {
    EndRecording(std::exchange(refusal, ""));
    if (gone) EndPicture();
    return false;
  }
  ShowRecording(true);
  SetDisplayText(capture.file);
  return true;
}

bool CTVDevice::BeginRecording() {
  QueryControls();
  ReattachVideo();
  if (!mediaControl) {
    RemoveRenderedFilters();  // else what writes would run with the preview
    return false;
  }
  const bool streamControl =
      LetFlow(*builder.Get(), PIN_CATEGORY_PREVIEW) && HoldBack(*builder.Get(), PIN_CATEGORY_CAPTURE);
  const HRESULT armed = streamControl ? mediaControl->Run() : mediaControl->Pause();
  if (GraphFails(armed, "start") || !AskReadyToRecord() || gone) return false;
  if (streamControl) {
    LetFlow(*builder.Get(), PIN_CATEGORY_CAPTURE);
  } else if (GraphFails(mediaControl->Run(), "run")) {
    return false;
  }
  for (const int lamp : {kAmLamp, kPmLamp}) SetDisplayElement(lamp, 0);  // the clock gives its digits away
  recordStartTime = ::timeGetTime();
  ::SetTimer(mainWindow, kRecordTimer, kRecordPeriodMs, nullptr);
  capturing = true;
  return true;
}

// Stops a graph that does not do as it was told, and reports that.
bool CTVDevice::GraphFails(HRESULT result, const char* verb) {
  if (SUCCEEDED(result)) return false;
  mediaControl->Stop();
  char text[60] = "";
  std::snprintf(text, sizeof text, "Error %lx: Cannot %s graph", static_cast<unsigned long>(result), verb);
  ReportError(text);
  return true;
}

void CTVDevice::OnRecordTick() {
  const DWORD elapsed = ::timeGetTime() - recordStartTime;
  PackedTime shown = 0;
  PackDisplayTime(elapsed * kUnitsPerMs, shown);
  ShowDisplayTime(shown);
  if (capture.timeLimitOn && elapsed / kMsPerSecond >= capture.timeLimitSeconds) Stop();
}

bool CTVDevice::Pause() { return recording && HoldBack(*builder.Get(), PIN_CATEGORY_CAPTURE); }

bool CTVDevice::Stop() {
  if (recording) EndRecording("");
  return true;
}

// `reason`: why, for the text line. The clock's digits keep the last time.
void CTVDevice::EndRecording(const std::string& reason) {
  ::KillTimer(mainWindow, kRecordTimer);
  std::string told = reason;
  bool lost = false;
  if (mediaControl) {
    if (const HRESULT stopped = mediaControl->Stop(); stopped != S_OK) {
      if (!sessionEnds) ReportErrorIf(stopped, "Stop");
      return;
    }
    // What went wrong while the file was finished concerns the file only.
    for (GraphEvent event; TakeEvent(event);) {
      lost = lost || IsLoss(event);
      if (IsFailure(event) && told.empty()) told = WritingFailure(static_cast<HRESULT>(event.first));
    }
    if (std::exchange(capturing, false)) lastRecording = CountsNow();
    RemoveRenderedFilters();
  }
  if (!sessionEnds && ShowPreview()) Play(0, 0);
  recording = false;
  ShowRecording(false);
  SetDisplayText(told);
  if (lost) EndPicture();
  if (capture.promptToSave && !sessionEnds) SaveCaptureFile(OwnerOfBox());
}

std::optional<RecordingReport> CTVDevice::Recorded() { return capturing ? CountsNow() : lastRecording; }

// A multiplexer that counts itself knows best what is in the file.
RecordingReport CTVDevice::CountsNow() {
  RecordingReport report;
  auto frames = multiplexer.As<IAMDroppedFrames>();
  if (!frames) FindInterface(&PIN_CATEGORY_CAPTURE, videoFilter, IID_IAMDroppedFrames, frames.ReceiveVoid());
  LONG delivered = 0;
  LONG dropped = 0;
  if (frames && SUCCEEDED(frames->GetNumNotDropped(&delivered))) report.frames = delivered;
  if (frames && SUCCEEDED(frames->GetNumDropped(&dropped))) report.dropped = dropped;
  if (const auto position = multiplexer.As<IMediaSeeking>()) position->GetCurrentPosition(&report.length);
  return report;
}

}  // namespace quorvex
