#include "devices/dvd/dvd_device.h"

#include <windows.h>

#include <errors.h>
#include <uuids.h>

#include <array>

#include "devices/config_store.h"
#include "devices/dvd/render_report.h"
#include "devices/open_sequence.h"
#include "panel/main_window.h"
#include "panel/status_display.h"
#include "video/video_window.h"

namespace quorvex {
namespace {

constexpr DWORD kLongestErrorText = 200;
constexpr std::size_t kLongestReport = 1000;
constexpr double kNormalSpeed = 1.0;
constexpr double kScanSpeed = 2.0;

std::string TextOf(HRESULT code) {
  std::array<char, kLongestErrorText> text{};
  return {text.data(), ::AMGetErrorTextA(code, text.data(), kLongestErrorText)};
}

void ReportRendering(const AM_DVD_RENDERSTATUS& status) {
  RenderFindings findings;
  findings.streams = status.iNumStreams;
  findings.streamsFailed = status.iNumStreamsFailed;
  findings.failedKinds = status.dwFailedStreamsFlag;
  if (FAILED(status.hrVPEStatus)) findings.overlayError = TextOf(status.hrVPEStatus);
  findings.volumeInvalid = status.bDvdVolInvalid != FALSE;
  findings.volumeUnknown = status.bDvdVolUnknown != FALSE;
  findings.noCaptionsIn = status.bNoLine21In != FALSE;
  findings.noCaptionsOut = status.bNoLine21Out != FALSE;
  std::array<char, kLongestReport> report{};
  const bool any = WriteRenderReport(findings, report) != 0;
  ReportError(any ? report.data() : "An unknown error has occurred");
}

}  // namespace

CDVDDevice::CDVDDevice() : CGraphDevice(DeviceType::kDvd) {
  playState = PlayState::kNone;
  tray.Open();  // without one a disc plays all the same
}

CDVDDevice::~CDVDDevice() {
  if (tray.IsOpen()) tray.Close();
  HideVideo();
  CDVDDevice::Close();
}

bool CDVDDevice::Open() {
  OpeningSteps steps;
  const bool made = steps.Take("CoCreateInstance(CLSID_DvdGraphBuilder)", [this] {
    return ::CoCreateInstance(CLSID_DvdGraphBuilder, nullptr, CLSCTX_INPROC, IID_IDvdGraphBuilder,
                              builder.ReceiveVoid());
  });
  if (!made) return steps.Succeeded();
  AM_DVD_RENDERSTATUS status{};
  const HRESULT result = builder->RenderDvdVideoVolume(nullptr, AM_DVD_HWDEC_PREFER, &status);
  if (SUCCEEDED(result) && result != S_FALSE) return true;
  ReportError("Error initializing DVD device.");
  ReportRendering(status);
  return false;
}

bool CDVDDevice::QueryControls() {
  SetDisplayText("Initializing DVD...");
  if (FAILED(builder->GetFiltergraph(graph.Receive()))) {
    refusal = "No DVD graph";
    return false;
  }
  OpeningSteps steps;
  steps.Take("IID_IDvdControl",
             [this] { return builder->GetDvdInterface(IID_IDvdControl, navigator.control.ReceiveVoid()); });
  const bool navigated = steps.Take("IID_IDvdInfo", [this] {
    return builder->GetDvdInterface(IID_IDvdInfo, navigator.info.ReceiveVoid());
  });
  if (!navigated) return steps.Succeeded();
  builder->GetDvdInterface(kIidLine21Decoder, captionDecoder.ReceiveVoid());  // or the disc has no captions
  QueryGraph(steps);
  steps.Query(graph.Get(), IID_IBasicAudio, basicAudio, "IID_IBasicAudio");
  steps.Query(graph.Get(), IID_IBasicVideo, basicVideo, "IID_IBasicVideo");
  return steps.Succeeded();
}

bool CDVDDevice::Activate() {
  LONG width = 0;
  LONG height = 0;
  if (basicVideo) {
    basicVideo->get_VideoWidth(&width);
    basicVideo->get_VideoHeight(&height);
  }
  if (width <= 0 || height <= 0) {
    refusal = "The DVD has no picture";
    return false;
  }
  if (const HRESULT shown = ShowVideo(width, height); shown != S_OK) return SUCCEEDED(shown);
  FollowGraph();
  PauseGraph();
  if (captionDecoder) captionsOn = ReadConfig().Integer("DVD", "ClosedCaption", 0) != 0;
  return LoadSettings();
}

bool CDVDDevice::Close() {
  if (mediaEvent) mediaEvent->SetNotifyWindow(0, kGraphMessage, 0);
  graph.Reset();
  basicAudio.Reset();
  basicVideo.Reset();
  mediaControl.Reset();
  mediaSeeking.Reset();
  mediaEvent.Reset();
  navigator.info.Reset();
  navigator.control.Reset();
  captionDecoder.Reset();
  builder.Reset();
  return true;
}

bool CDVDDevice::Eject() {
  if (tray.QueryMode() == MCI_MODE_OPEN) {
    tray.CloseDoor();
    return true;
  }
  CloseDisc();
  tray.OpenDoor();
  ShowNoDisc();
  return true;
}

void CDVDDevice::CloseDisc() {
  HideVideo();
  DeleteVideoWindow();
  Close();
}

void CDVDDevice::ShowNoDisc() {
  OnTitleChange(kNoTitle);
  titleTime = 0;
  currentNumber = -1;
  ClearDisplayTime();
  ClearDisplayNumbers();
  SetPlayState(PlayState::kStopped);
}

template <typename Operation>
bool CDVDDevice::RunAnd(const Operation& operation) {
  const HRESULT result = mediaControl->Run();
  operation();
  SetPlayState(PlayState::kPlaying);
  return SUCCEEDED(result);
}

bool CDVDDevice::Play(int /*item*/, int /*reserved*/) {
  if (!IsGraphOpen() && !OpenCurrentDevice()) return false;
  return RunAnd([this] { navigator.control->ForwardScan(kNormalSpeed); });
}

bool CDVDDevice::FastForward() {
  return IsGraphOpen() && RunAnd([this] { navigator.control->ForwardScan(kScanSpeed); });
}

bool CDVDDevice::Rewind() {
  return IsGraphOpen() && RunAnd([this] { navigator.control->BackwardScan(kScanSpeed); });
}

bool CDVDDevice::NextItem() {
  return IsGraphOpen() && RunAnd([this] { navigator.control->NextPGSearch(); });
}

bool CDVDDevice::PreviousItem() {
  return IsGraphOpen() && RunAnd([this] { navigator.control->PrevPGSearch(); });
}

bool CDVDDevice::PlayChapter(int chapter) {
  if (!IsGraphOpen()) return false;
  const auto number = static_cast<ULONG>(chapter);
  if (!menuShown || currentTitle == kNoTitle)
    return RunAnd([&] { navigator.control->ChapterSearch(number); });
  const HRESULT result = navigator.control->ChapterPlay(currentTitle, number);
  SetPlayState(PlayState::kPlaying);
  return SUCCEEDED(result);
}

}  // namespace quorvex
