#include "devices/media/file_device.h"

#include <windows.h>

#include <commdlg.h>
#include <evcode.h>
#include <uuids.h>

#include <algorithm>

#include "base/ini_file.h"
#include "base/wide_text.h"
#include "devices/config_store.h"
#include "devices/media/render_file.h"
#include "devices/open_sequence.h"
#include "devices/shared_state.h"
#include "panel/main_window.h"
#include "panel/status_display.h"
#include "video/video_window.h"

namespace quorvex {
namespace {

constexpr UINT kTickMs = 100;
constexpr std::int64_t kSecond = 10'000'000;  // of media time
constexpr std::size_t kLongestPath = 259;
constexpr char kTracks[] = "Tracks";

void ShowMediaTime(std::int64_t time) {
  PackedTime packed = 0;
  PackDisplayTime(time, packed);
  ShowDisplayTimeTenths(packed);
}

std::string TitleOf(const std::string& path) {
  char title[MAX_PATH] = "";
  return ::GetFileTitleA(path.c_str(), title, MAX_PATH) == 0 ? title : path;
}

}  // namespace

CFileDevice::CFileDevice() : CGraphDevice(DeviceType::kFile) {
  ::SetTimer(mainWindow, kDeviceTimer, kTickMs, nullptr);
}

CFileDevice::~CFileDevice() {
  ::KillTimer(mainWindow, kDeviceTimer);
  CDevice::Stop();
  HideVideo();
  CFileDevice::Close();
}

bool CFileDevice::LoadMedia() {
  autoPlay = ReadConfig().Integer("MEDIA FILE", "AutoPlay", 1) != 0;
  playlist = currentPlaylist;
  const int listed = IniFile(mediaAlbumPath).Read().Integer(playlist, kTracks, 0);
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
  const IniSnapshot store = IniFile(mediaAlbumPath).Read();
  // An album that was renamed since is the one that is marked.
  const std::string& listed = store.document.Find(playlist, kTracks) ? playlist : currentPlaylist;
  filePath = store.String(listed, std::to_string(entry), kLongestPath);
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
  endedInScan = false;
  SetPointer(IDC_WAIT);
  const bool open = Open() && QueryControls() && Activate();
  if (open) {
    UpdateStateLamps();
  } else {
    EndCurrentDevice("");  // takes this very object down
  }
  SetPointer(IDC_ARROW);
  return open;
}

bool CFileDevice::Open() {
  OpeningSteps steps;
  steps.Take("CoCreateInstance(CLSID_FilterGraph)", [this] {
    return ::CoCreateInstance(CLSID_FilterGraph, nullptr, CLSCTX_INPROC_SERVER, IID_IGraphBuilder,
                              graph.ReceiveVoid());
  });
  steps.Take(filePath + "\r\n\nCannot playback file.  Unsupported file format.", [this] {
    SetDisplayText("Loading...");
    return RenderMediaFile(graph.Get(), WideText(filePath).c_str());
  });
  return steps.Succeeded();
}

bool CFileDevice::QueryControls() {
  OpeningSteps steps;
  QueryGraph(steps);
  return steps.Succeeded();
}

bool CFileDevice::Activate() {
  OpeningSteps steps;
  ComPtr<IBasicVideo> picture;
  if (!steps.Query(graph.Get(), IID_IBasicVideo, picture, "IID_IBasicVideo")) return steps.Succeeded();
  LONG width = 0;
  LONG height = 0;
  if (FAILED(picture->GetVideoSize(&width, &height))) width = height = 0;
  picture.Reset();
  if (width <= 0 || height <= 0) {
    DeleteVideoWindow();
    fullScreen = false;
  } else {
    if (const HRESULT shown = ShowVideo(width, height); shown != S_OK) return SUCCEEDED(shown);
    scanOption = true;
  }
  FollowGraph();
  duration = 0;
  if (!ReadDuration(steps)) return steps.Succeeded();
  SetDisplayText(TitleOf(filePath));
  return PauseGraph();
}

// Answers whether to go on. A graph that reported another success than S_OK has no seeking.
bool CFileDevice::ReadDuration(OpeningSteps& steps) {
  if (!mediaSeeking) return true;
  steps.Take("SetTimeFormat", [this] { return mediaSeeking->SetTimeFormat(&TIME_FORMAT_MEDIA_TIME); });
  return steps.Take("GetDuration", [this] { return mediaSeeking->GetDuration(&duration); });
}

bool CFileDevice::Play(int /*item*/, int /*reserved*/) {
  if (!mediaControl) return false;
  const HRESULT result = mediaControl->Run();
  SetPlayState(PlayState::kPlaying);
  return SUCCEEDED(result);
}

bool CFileDevice::NextItem() {
  if (orderLength == 0) return false;
  StepForward();
  return PlayCurrentEntry();
}

bool CFileDevice::PreviousItem() {
  if (orderLength == 0) return false;
  StepBack();
  return PlayCurrentEntry();
}

int CFileDevice::IndexOfEntryOrZero(int entry) const { return std::max(IndexOf(entry), 0); }

bool CFileDevice::OnRandomChanged() {
  if (orderLength == 0) return false;
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
  if (!mediaSeeking) return;
  endedInScan = false;
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
  if (endedInScan) HandleComplete();
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
  GraphEvent event;
  // After a change of entry the events are those of the new graph.
  while (TakeEvent(event)) {
    if (event.code == EC_COMPLETE && !HandleComplete()) return;
  }
}

// The file has come to its end, which counts when a scan that passes it stays there. Answers false when this
// object is gone.
bool CFileDevice::HandleComplete() {
  endedInScan = scanning;
  if (scanning) return true;
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
  return true;
}

}  // namespace quorvex
