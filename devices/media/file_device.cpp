#include "devices/media/file_device.h"

#include <windows.h>

#include <commdlg.h>
#include <evcode.h>
#include <uuids.h>

#include <algorithm>
#include <array>

#include "base/ini_file.h"
#include "devices/current_device.h"
#include "devices/media/render_file.h"
#include "devices/shared_state.h"
#include "panel/main_window.h"
#include "panel/status_display.h"
#include "video/video_window.h"

namespace quorvex {
namespace {

constexpr UINT kTickMs = 100;
constexpr std::int64_t kSecond = 10'000'000;  // of media time
constexpr std::size_t kLongestPath = 259;

void ShowMediaTime(std::int64_t time) {
  PackedTime packed = 0;
  PackDisplayTime(time, packed);
  ShowDisplayTimeTenths(packed);
}

void SetPointer(LPCSTR cursor) { ::SetCursor(::LoadCursorA(nullptr, cursor)); }

std::string TitleOf(const std::string& path) {
  char title[MAX_PATH] = "";
  return ::GetFileTitleA(path.c_str(), title, MAX_PATH) == 0 ? title : path;
}

// Asks `from` for an interface; the code is reported with its name unless it is S_OK. Answers the code.
template <typename Interface>
HRESULT Query(IGraphBuilder* from, REFIID iid, ComPtr<Interface>& to, const char* name, bool& reported) {
  const HRESULT result = from->QueryInterface(iid, to.ReceiveVoid());
  reported = ReportErrorIf(result, name);
  return result;
}

}  // namespace

CFileDevice::CFileDevice() : CDevice(DeviceType::kFile) {
  ::SetTimer(mainWindow, kDeviceTimer, kTickMs, nullptr);
}

CFileDevice::~CFileDevice() {
  ::KillTimer(mainWindow, kDeviceTimer);
  CDevice::Stop();
  HideVideo();
  CFileDevice::Close();
}

bool CFileDevice::LoadMedia() {
  autoPlay = IniFile(configPath).Read().Integer("MEDIA FILE", "AutoPlay", 1) != 0;
  const int listed = IniFile(mediaAlbumPath).Read().Integer(currentPlaylist, "Tracks", 0);
  if (listed <= 0) return false;
  itemCount = std::min(listed, static_cast<int>(kMaxOrderLength));
  SetDisplayElement(kOfLabel, 1);
  ShowDisplayNumber(itemCount, false, true);
  BuildPlayOrder();
  orderIndex = 0;
  if (!OpenCurrentEntry()) return false;
  if (autoPlay) {
    Play(0, 0);
  } else {
    SetPlayState(PlayState::kPaused);
  }
  if (listed > itemCount)
    SetDisplayText("The first " + std::to_string(itemCount) + " of " + std::to_string(listed) + " files");
  return true;
}

bool CFileDevice::BuildPlayOrder() {
  SetPlainOrder();
  if (randomOn) Shuffle();
  return true;
}

bool CFileDevice::OpenCurrentEntry() {
  const int entry = CurrentEntry();
  filePath = IniFile(mediaAlbumPath).Read().String(currentPlaylist, std::to_string(entry), kLongestPath);
  if (!ReopenGraph()) return false;
  ShowDisplayTimeTenths(0);
  SetDisplayElement(kFileLabel, 1);
  ShowDisplayNumber(entry, false, false);
  return true;
}

bool CFileDevice::PlayCurrentEntry() { return OpenCurrentEntry() && (Play(0, 0), true); }

bool CFileDevice::ReopenGraph() {
  HideVideo();
  Close();
  scanOption = false;
  scanning = false;
  SetPointer(IDC_WAIT);
  const bool open = Open() && QueryControls() && Activate();
  if (open) {
    UpdateStateLamps();
  } else {
    EndWithoutDevice();
  }
  SetPointer(IDC_ARROW);
  return open;
}

// Takes this very object down.
void CFileDevice::EndWithoutDevice() {
  currentDeviceType = DeviceType::kNone;
  SetPlayState(PlayState::kStopped);
  ClearDisplayText();
  ClearDisplayNumbers();
  ClearDisplayTime();
  currentDevice.reset();
  DeleteVideoWindow();
}

bool CFileDevice::Open() {
  HRESULT result = ::CoCreateInstance(CLSID_FilterGraph, nullptr, CLSCTX_INPROC_SERVER, IID_IGraphBuilder,
                                      graph.ReceiveVoid());
  if (ReportErrorIf(result, "CoCreateInstance(CLSID_FilterGraph)")) return SUCCEEDED(result);
  SetDisplayText("Loading...");
  std::array<wchar_t, MAX_PATH> wide{};
  ::MultiByteToWideChar(CP_ACP, 0, filePath.c_str(), -1, wide.data(), static_cast<int>(wide.size()));
  result = RenderMediaFile(graph.Get(), wide.data());
  ReportErrorIf(result, filePath + "\r\n\nCannot playback file.  Unsupported file format.");
  return SUCCEEDED(result);
}

bool CFileDevice::QueryControls() {
  bool reported = false;
  HRESULT result = Query(graph.Get(), IID_IMediaControl, mediaControl, "IID_IMediaControl", reported);
  if (!reported) result = Query(graph.Get(), IID_IMediaEventEx, mediaEvent, "IID_IMediaEventEx", reported);
  if (!reported) result = Query(graph.Get(), IID_IMediaSeeking, mediaSeeking, "IID_IMediaSeeking", reported);
  return SUCCEEDED(result);
}

bool CFileDevice::Activate() {
  ComPtr<IBasicVideo> picture;
  bool reported = false;
  HRESULT result = Query(graph.Get(), IID_IBasicVideo, picture, "IID_IBasicVideo", reported);
  if (reported) return SUCCEEDED(result);
  LONG width = 0;
  LONG height = 0;
  if (FAILED(picture->GetVideoSize(&width, &height))) width = height = 0;
  picture.Reset();
  if (width <= 0 || height <= 0) {
    DeleteVideoWindow();
    fullScreen = false;
  } else if (!ShowVideo(width, height)) {
    return false;
  }
  mediaEvent->SetNotifyWindow(reinterpret_cast<OAHWND>(mainWindow), kGraphMessage, 0);
  result = mediaSeeking->SetTimeFormat(&TIME_FORMAT_MEDIA_TIME);
  if (ReportErrorIf(result, "SetTimeFormat")) return SUCCEEDED(result);
  result = mediaSeeking->GetDuration(&duration);
  if (ReportErrorIf(result, "GetDuration")) return SUCCEEDED(result);
  SetDisplayText(TitleOf(filePath));
  return PauseGraph();
}

bool CFileDevice::ShowVideo(int width, int height) {
  if (!theVideoWindow) theVideoWindow = std::make_unique<CVWindow>();
  bool reported = false;
  const HRESULT result = Query(graph.Get(), IID_IVideoWindow, videoWindow, "IID_IVideoWindow", reported);
  if (reported && FAILED(result)) return false;
  videoWindowHandle = theVideoWindow->Attach(videoWindow.Get(), width, height);
  if (videoWindowHandle == nullptr) {
    videoWindow.Reset();
    return false;
  }
  scanOption = true;
  return true;
}

void CFileDevice::HideVideo() {
  if (theVideoWindow) theVideoWindow->Detach();
  if (!videoWindow) return;
  videoWindow->put_Visible(0);  // OAFALSE
  videoWindow->put_Owner(0);
}

bool CFileDevice::Play(int /*item*/, int /*reserved*/) {
  if (!mediaControl) return false;
  const HRESULT result = mediaControl->Run();
  playState = PlayState::kPlaying;
  return SUCCEEDED(result);
}

bool CFileDevice::NextItem() {
  StepForward();
  return PlayCurrentEntry();
}

bool CFileDevice::PreviousItem() {
  StepBack();
  return PlayCurrentEntry();
}

int CFileDevice::IndexOfEntryOrZero(int entry) const { return std::max(IndexOf(entry), 0); }

bool CFileDevice::OnRandomChanged() {
  const int entry = CurrentEntry();
  BuildPlayOrder();
  if (!randomOn) {
    orderIndex = IndexOfEntryOrZero(entry);
    return true;
  }
  orderIndex = 0;
  return PlayCurrentEntry();
}

void CFileDevice::SeekTo(std::int64_t position) {
  mediaSeeking->SetPositions(&position, AM_SEEKING_AbsolutePositioning, nullptr, AM_SEEKING_NoPositioning);
}

// A picture follows at once; sound alone jumps when the scan ends.
void CFileDevice::ScanBy(std::int64_t step) {
  if (!mediaSeeking) return;
  if (!scanning) {
    scanning = true;
    mediaSeeking->GetCurrentPosition(&scanPosition);
  }
  scanPosition += step;
  if (scanPosition > duration) scanPosition = 0;
  if (scanPosition < 0) scanPosition = duration;
  if (scanOption) SeekTo(scanPosition);
  ShowMediaTime(scanPosition);
}

bool CFileDevice::FastForward() {
  ScanBy(kSecond);
  return true;
}

bool CFileDevice::Rewind() {
  ScanBy(-kSecond);
  return true;
}

bool CFileDevice::EndScan() {
  if (!scanning) return true;
  scanning = false;
  if (!scanOption) SeekTo(scanPosition);
  return true;
}

void CFileDevice::OnTick() {
  if (scanning || !mediaSeeking) return;
  if (playState == PlayState::kStopped) ShowMediaTime(0);
  if (playState == PlayState::kPlaying) {
    std::int64_t position = 0;
    mediaSeeking->GetCurrentPosition(&position);
    ShowMediaTime(position);
  }
  UpdateStateLamps();
  UpdateButtonStates();
}

void CFileDevice::OnGraphEvent() {
  long code = 0;
  LONG_PTR first = 0;
  LONG_PTR second = 0;
  while (mediaEvent && SUCCEEDED(mediaEvent->GetEvent(&code, &first, &second, 0))) {
    mediaEvent->FreeEventParams(code, first, second);
    // After a change of entry the events are those of the new graph.
    if (code == EC_COMPLETE && !HandleComplete()) return;
  }
}

// The file has come to its end. Answers false when this object is gone.
bool CFileDevice::HandleComplete() {
  if (repeatMode == RepeatMode::kOne) {
    SeekTo(0);
    Play(0, 0);
    return true;
  }
  if (repeatMode == RepeatMode::kOff && AtLastEntry()) {
    Stop();
    return true;
  }
  return NextItem();
}

bool CFileDevice::Close() {
  // A graph that still runs may be held by a stream that is just ending, and would then be taken down on that
  // stream's thread.
  if (mediaControl) mediaControl->Stop();
  graph.Reset();
  mediaControl.Reset();
  mediaSeeking.Reset();
  mediaEvent.Reset();
  videoWindow.Reset();
  return true;
}

}  // namespace quorvex
