// The graph of a capture device: its filters, what renders its preview, and how both are taken down.
#include <windows.h>

#include <uuids.h>
#include <vfwmsgs.h>

#include "devices/shared_state.h"
#include "devices/tv/device_category.h"
#include "devices/tv/pin_format.h"
#include "devices/tv/pins.h"
#include "devices/tv/tv_device.h"
#include "panel/main_window.h"

namespace quorvex {
namespace {

// Reports a failure, but no other code.
bool Fails(HRESULT result, const char* text) {
  if (FAILED(result)) ReportError(text);
  return FAILED(result);
}

}  // namespace

bool CTVDevice::CreateCaptureFilters() {
  if (AddVideoFilter() && AddAudioFilter()) return true;
  ReleaseGraph();
  return false;
}

bool CTVDevice::FindVideoFilter() {
  OpeningSteps steps;
  ComPtr<ICreateDevEnum> devices;
  steps.Take("IID_ICaptureGraphBuilder", [this] {
    return ::CoCreateInstance(CLSID_CaptureGraphBuilder, nullptr, CLSCTX_INPROC_SERVER,
                              IID_ICaptureGraphBuilder, builder.ReceiveVoid());
  });
  steps.Take("IID_ICreateDevEnum", [&] { return CreateDeviceEnumerator(devices); });
  const bool listed = steps.Take("No video capture hardware was found", [&] {
    return BindFilterAt(*devices.Get(), CLSID_VideoInputDeviceCategory, currentCaptureDevice, videoFilter);
  });
  if (listed && !videoFilter) ReportError("Capture device was not detected.");
  return static_cast<bool>(videoFilter);
}

bool CTVDevice::AddVideoFilter() {
  if (!FindVideoFilter()) return false;
  const HRESULT made = ::CoCreateInstance(CLSID_FilterGraph, nullptr, CLSCTX_INPROC_SERVER, IID_IGraphBuilder,
                                          graph.ReceiveVoid());
  if (Fails(made, "Cannot instantiate filtergraph") ||
      Fails(builder->SetFiltergraph(graph.Get()), "Cannot give graph to builder") ||
      Fails(graph->AddFilter(videoFilter.Get(), nullptr), "Cannot add vidcap to filtergraph")) {
    return false;
  }
  FindVideoInterfaces();
  return true;
}

void CTVDevice::FindVideoInterfaces() {
  Fails(FindInterface(&PIN_CATEGORY_CAPTURE, videoFilter, IID_IAMStreamConfig, videoStream.ReceiveVoid()),
        "Cannot find VCapture:IAMStreamConfig");
  if (videoStream) {
    PinFormat format;
    if (format.Read(*videoStream.Get()) == S_OK) nativeSize = format.PictureSize();
  }
  FindInterface(&PIN_CATEGORY_CAPTURE, videoFilter, IID_IAMVfwCaptureDialogs, dialogs.ReceiveVoid());
  FindInterface(nullptr, videoFilter, IID_IAMTVTuner, tuner.ReceiveVoid());
}

bool CTVDevice::AddAudioFilter() {
  ComPtr<ICreateDevEnum> devices;
  if (FAILED(CreateDeviceEnumerator(devices))) {
    refusal = "The platform lists no devices";
    return false;
  }
  if (BindFilterAt(*devices.Get(), CLSID_AudioInputDeviceCategory, 0, audioFilter) != S_OK) {
    capture.audio = false;
    return true;
  }
  if (!audioFilter) {
    ReportError("Cannot create audio capture filter");
    return true;
  }
  if (Fails(graph->AddFilter(audioFilter.Get(), nullptr), "Cannot add audcap to filtergraph")) return false;
  Fails(FindInterface(&PIN_CATEGORY_CAPTURE, audioFilter, IID_IAMStreamConfig, audioStream.ReceiveVoid()),
        "Cannot find ACapture:IAMStreamConfig");
  return true;
}

bool CTVDevice::RenderPreview() {
  if (!videoFilter) return false;
  RenderPreviewPin();
  const HRESULT found = FindPreviewWindow("This graph cannot preview properly");
  if (found != S_OK) return SUCCEEDED(found);
  // It is shown with the rate that it has: another can then be chosen.
  if (FAILED(ApplyCaptureFrameRate("Error: Cannot set frame rate for preview")))
    notice = "The capture device does not take its format";
  AddCaptions();
  return true;
}

HRESULT CTVDevice::FindPreviewWindow(const char* message) {
  const GUID& rendered = previewFromCapturePin ? PIN_CATEGORY_CAPTURE : PIN_CATEGORY_PREVIEW;
  const HRESULT result = FindInterface(&rendered, videoFilter, IID_IVideoWindow, videoWindow.ReceiveVoid());
  ReportErrorIf(result, message);
  return result;
}

HRESULT CTVDevice::ApplyCaptureFrameRate(const char* message) {
  if (!videoStream || !capture.useFrameRate) return S_OK;
  return ApplyFrameRate(*videoStream.Get(), capture.frameRate, message);
}

void CTVDevice::RenderPreviewPin() {
  const HRESULT result = builder->RenderStream(&PIN_CATEGORY_PREVIEW, videoFilter.Get(), nullptr, nullptr);
  if (result == VFW_S_NOPREVIEWPIN) {
    previewFromCapturePin = true;
  } else {
    ReportErrorIf(result, "This graph cannot preview!");
  }
}

void CTVDevice::AddCaptions() {
  if (!tuner) return;
  captionDecoder.Reset();
  captionDecoder = captionChain.AddTo(*graph.Get());
  if (captionDecoder) captionChain.Connect(*graph.Get(), *videoFilter.Get());
}

void CTVDevice::StopGraph() {
  if (mediaControl) mediaControl->Stop();
}

void CTVDevice::RemoveRenderedFilters() {
  basicAudio.Reset();
  mediaControl.Reset();
  fileWriter.Reset();
  muxConfiguration.Reset();
  multiplexer.Reset();
  HideVideo();
  RemoveDownstream(*graph.Get(), videoFilter.Get());
  if (audioFilter) RemoveDownstream(*graph.Get(), audioFilter.Get());
}

void CTVDevice::RebuildPreview() {
  RemoveRenderedFilters();
  ShowPreview();
}

bool CTVDevice::ShowPreview() {
  if (!RenderPreview()) return false;
  QueryControls();
  ReattachVideo();
  ApplyCaptionBackground();  // the decoder is another one
  ApplyCaptionState();
  return true;
}

void CTVDevice::ReleaseGraph() {
  graph.Reset();
  builder.Reset();
  videoFilter.Reset();
  audioFilter.Reset();
  audioStream.Reset();
  videoStream.Reset();
  fileWriter.Reset();
  multiplexer.Reset();
  muxConfiguration.Reset();
  dialogs.Reset();
  captionDecoder.Reset();
  captionChain.Release();
}

}  // namespace quorvex
