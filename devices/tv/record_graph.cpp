// The graph that records: the capture streams into the multiplexer, beside the preview.
#include <windows.h>

#include <uuids.h>

#include "base/wide_text.h"
#include "devices/tv/pin_format.h"
#include "devices/tv/pins.h"
#include "devices/tv/tv_device.h"
#include "panel/main_window.h"

namespace quorvex {

bool CTVDevice::RenderCapture() {
  if (!videoFilter) return false;
  if (capture.audio && !audioFilter) {
    refusal = "There is no sound input to record from";
    return false;
  }
  const bool rendered = RenderCaptureSteps();
  if (!rendered) {
    RemoveOutputFile();
    RemoveRenderedFilters();
  }
  return rendered;
}

// What writes is in the graph even when no stream leads to it.
void CTVDevice::RemoveOutputFile() {
  if (!multiplexer) return;
  RemoveDownstream(*graph.Get(), multiplexer.Get());
  graph->RemoveFilter(multiplexer.Get());
}

bool CTVDevice::RenderCaptureSteps() {
  if (!OpenOutputFile()) return false;
  if (!RenderIntoFile(videoFilter, "Cannot render video capture stream.")) return false;
  RenderPreviewPin();
  if (capture.audio && !RenderIntoFile(audioFilter, "Cannot render audio capture stream.")) return false;
  if (FindPreviewWindow("This graph cannot preview properly.") != S_OK) return false;
  ApplyCaptureFrameRate("Error: Cannot set frame rate for preview.");
  return true;
}

bool CTVDevice::OpenOutputFile() {
  const HRESULT result = builder->SetOutputFileName(&MEDIASUBTYPE_Avi, WideText(capture.file).c_str(),
                                                    multiplexer.Receive(), fileWriter.Receive());
  if (FAILED(result)) {
    ReportError("Cannot set capture file.");
    return false;
  }
  muxConfiguration = multiplexer.As<IConfigAviMux>();
  if (!muxConfiguration) return true;
  muxConfiguration->SetOutputCompatibilityIndex(TRUE);
  if (capture.audio && FAILED(muxConfiguration->SetMasterStream(capture.masterStream)))
    ReportError("SetMasterStream failed!");
  return true;
}

bool CTVDevice::RenderIntoFile(const ComPtr<IBaseFilter>& filter, const char* message) {
  const HRESULT result =
      builder->RenderStream(&PIN_CATEGORY_CAPTURE, filter.Get(), nullptr, multiplexer.Get());
  if (FAILED(result)) ReportError(message);
  return SUCCEEDED(result);
}

}  // namespace quorvex
