#include "devices/tv/tv_device.h"

#include <windows.h>

#include <evcode.h>

#include "base/ini_file.h"
#include "devices/shared_state.h"
#include "panel/main_window.h"
#include "panel/status_display.h"

namespace quorvex {
namespace {

constexpr char kNoPicture[] = "The capture device has no picture";

}  // namespace

CTVDevice::CTVDevice() : CGraphDevice(DeviceType::kTv) {}

CTVDevice::~CTVDevice() {
  CTVDevice::SaveSettings();
  CTVDevice::Stop();
  EndEntry();
  HideVideo();
  SetDisplayElement(kChannelLabel, 0);
  ClearDisplayNumbers();
  CTVDevice::Close();
}

bool CTVDevice::Open() {
  SetDisplayText("Initializing TV/CAP...");
  LoadSettings();
  bool open = CreateCaptureFilters();
  if (open) FinishLastRecording();
  open = open && RenderPreview();
  ClearDisplayText();
  return open;
}

bool CTVDevice::QueryControls() {
  OpeningSteps steps;
  steps.Query(graph.Get(), IID_IMediaControl, mediaControl, "IID_IMediaControl");
  steps.Query(graph.Get(), IID_IBasicAudio, basicAudio, "IID_IBasicAudio");
  if (SUCCEEDED(graph->QueryInterface(IID_IMediaEventEx, mediaEvent.ReceiveVoid()))) FollowGraph();
  return steps.Succeeded();
}

bool CTVDevice::Activate() {
  FindInterface(nullptr, videoFilter, IID_IAMCrossbar, crossbar.ReceiveVoid());
  if (!videoWindow || nativeSize.width == 0 || nativeSize.height == 0) {
    refusal = kNoPicture;
    return false;
  }
  if (!AttachVideo(nativeSize.width, nativeSize.height)) return false;
  if (!tuner) captionsOn = false;
  ApplyCaptionBackground();
  ApplyCaptionState();
  ApplyTunerInput();
  ApplyVideoInput();
  Play(0, 0);
  return true;
}

bool CTVDevice::Close() {
  if (mediaEvent) mediaEvent->SetNotifyWindow(0, kGraphMessage, 0);
  ReleaseGraph();
  pictureControls.Reset();
  basicAudio.Reset();
  videoWindow.Reset();
  mediaControl.Reset();
  mediaEvent.Reset();
  tuner.Reset();
  crossbar.Reset();
  return true;
}

void CTVDevice::OnGraphEvent() {
  GraphEvent event;
  while (TakeEvent(event)) {
    if (event.code == EC_DEVICE_LOST) OnDeviceLost(event.second != 0);
    if (event.code == EC_ERRORABORT || event.code == EC_STREAM_ERROR_STOPPED)
      OnWritingFailed(static_cast<HRESULT>(event.first));
  }
}

// What was recorded so far is kept.
void CTVDevice::OnDeviceLost(bool isBack) {
  const char* const text = isBack ? "" : "The capture device is gone";
  recording && !isBack ? EndRecording(text) : SetDisplayText(text);
}

void CTVDevice::OnWritingFailed(HRESULT result) {
  if (!recording) return;
  const bool full = result == HRESULT_FROM_WIN32(ERROR_DISK_FULL) || result == STG_E_MEDIUMFULL;
  EndRecording(full ? "Recording stopped: the disk is full" : "Recording stopped: cannot write the file");
}

bool CTVDevice::Play(int /*item*/, int /*reserved*/) {
  if (!mediaControl) return false;
  if (SUCCEEDED(mediaControl->Run())) return true;
  mediaControl->Stop();
  return false;
}

bool CTVDevice::ToggleClosedCaption() {
  if (!captionDecoder) return false;
  captionsOn = !captionsOn;
  ApplyCaptionState();
  return true;
}

bool CTVDevice::LoadSettings() {
  const IniSnapshot store = IniFile(configPath).Read();
  const TvSettings tv = ReadTvSettings(store.document);
  tunerInput = tv.tunerInput;
  videoInput = tv.videoInput;
  captionsOn = tv.captionsOn;
  captionOpaque = tv.captionOpaque;
  capture = ReadCaptureSettings(store.document);
  return true;
}

bool CTVDevice::SaveSettings() {
  return UpdateStore([this](IniDocument& store) {
    if (tuner) {
      WriteTvSettings(store, {tunerInput, videoInput, captionsOn, captionOpaque});
      if (listStands) WriteChannelList(store, tunerInput, *this);
    }
    WriteCaptureSettings(store, capture);
  });
}

bool CTVDevice::UpdateStore(const std::function<void(IniDocument&)>& change) {
  const IniFile::Result result = IniFile(configPath).Update(change);
  if (result == IniFile::Result::kDone) return true;
  SetDisplayText(result == IniFile::Result::kFailed ? "Cannot write quorvex.ini" : "Cannot read quorvex.ini");
  return false;
}

void CTVDevice::TellRefusal(HRESULT result, const std::string& text) {
  if (FAILED(result)) {
    SetDisplayText(text);
  } else if (refused) {
    ClearDisplayText();
  }
  refused = FAILED(result);
}

}  // namespace quorvex
