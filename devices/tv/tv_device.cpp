#include "devices/tv/tv_device.h"

#include <windows.h>

#include <evcode.h>

#include "devices/config_store.h"
#include "panel/main_window.h"
#include "panel/status_display.h"
#include "video/video_window.h"

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
  if (notice.empty()) notice = refusedInput.empty() ? refusedChannel : refusedInput;
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
    if (IsFailure(event) && recording) {
      EndRecording(WritingFailure(static_cast<HRESULT>(event.first)));
    } else if (IsLoss(event) || IsFailure(event)) {
      EndPicture();
    }
  }
}

// A dialog of this device may be open: the device itself stays. What was recorded so far is kept.
void CTVDevice::EndPicture() {
  gone = true;
  if (recording) EndRecording("");
  StopGraph();
  HideVideo();
  DeleteVideoWindow();
  SetDisplayText("The capture device is gone");
}

bool CTVDevice::IsLoss(const GraphEvent& event) {
  return event.code == EC_DEVICE_LOST && event.second == 0;  // 1: it is back
}

bool CTVDevice::IsFailure(const GraphEvent& event) {
  return event.code == EC_ERRORABORT || event.code == EC_STREAM_ERROR_STOPPED;
}

std::string CTVDevice::WritingFailure(HRESULT result) {
  const bool full = result == HRESULT_FROM_WIN32(ERROR_DISK_FULL) || result == STG_E_MEDIUMFULL;
  return full ? "Recording stopped: the disk is full" : "Recording stopped: cannot write the file";
}

bool CTVDevice::Play(int /*item*/, int /*reserved*/) {
  if (!mediaControl || gone) return false;
  if (SUCCEEDED(mediaControl->Run())) return true;
  mediaControl->Stop();
  return false;
}

void CTVDevice::SetTunerInput(TunerFeed input) {
  tunerInput = input;
  ApplyTunerInput();
}

void CTVDevice::SetCaptionBackground(bool opaque) {
  captionOpaque = opaque;
  ApplyCaptionBackground();
}

bool CTVDevice::ToggleClosedCaption() {
  if (!captionDecoder) return false;
  captionsOn = !captionsOn;
  ApplyCaptionState();
  return true;
}

bool CTVDevice::LoadSettings() {
  const IniSnapshot store = ReadConfig();
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
  const IniFile::Result result = UpdateConfig(change);
  TellConfigResult(result);
  return result == IniFile::Result::kDone;
}

void CTVDevice::TellRefusal(HRESULT result, const std::string& text, std::string& told) {
  if (FAILED(result)) {
    SetDisplayText(text);
  } else if (!told.empty() && ShownContent().text == told) {
    ClearDisplayText();
  }
  told = FAILED(result) ? text : "";
}

}  // namespace quorvex
