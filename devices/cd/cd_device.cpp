#include "devices/cd/cd_device.h"

#include "devices/cd/disc_store.h"
#include "devices/cd/mci_error.h"
#include "devices/cd/playlist_view.h"
#include "devices/config_store.h"
#include "devices/shared_state.h"
#include "panel/main_window.h"
#include "panel/status_display.h"
#include "resources/ids.h"

namespace quorvex {
namespace {

constexpr UINT kPollMs = 200;
constexpr int kPatience = 3;  // ticks in which a drive may leave a question open

constexpr char kCannotRead[] = "Cannot read cd.abm";
constexpr char kCannotWrite[] = "Cannot write cd.abm";

void ShowCdTime(Tmsf position) { ShowDisplayTime(PackTime(0, position.minutes, position.seconds)); }

}  // namespace

CCDDevice::CCDDevice() : CDevice(DeviceType::kCd), store(cdAlbumPath) {}

CCDDevice::~CCDDevice() {
  ::KillTimer(mainWindow, kDeviceTimer);
  if (stopOnExit) CCDDevice::Stop();
  if (drive.IsOpen()) ReportMciError(drive.Close());
}

bool CCDDevice::Activate() { return ::SetTimer(mainWindow, kDeviceTimer, kPollMs, nullptr) != 0; }

// Without the time format no position means anything: a drive that does not take it, which is told once, is
// asked again at every tick.
bool CCDDevice::OpenCdAudio() {
  const bool first = !drive.IsOpen();
  if (first) {
    SetDisplayText("Initializing CD...");
    if (drive.Open() != 0) return false;
  }
  const MCIERROR error = drive.SetTimeFormat();
  if (first) ReportMciError(error);
  ready = error == 0;
  return ready;
}

// Whether a drive that has not answered is to be asked again at the next tick.
bool CCDDevice::IsWaitedFor() {
  if (CdDrive::IsBrokenOff() || ++unanswered < kPatience) return true;
  unanswered = 0;
  return false;
}

void CCDDevice::OnTick() {
  if (!ready && !OpenCdAudio()) return;
  const std::uint32_t mode = drive.QueryMode();
  if (CdDrive::IsBrokenOff()) return;
  if (mode != lastMode) OnModeChange(mode);
  const std::optional<bool> answer = drive.QueryMediaPresent();
  if (!answer && IsWaitedFor()) return;
  if (const bool present = answer.value_or(false); present != mediaPresent) {
    mediaPresent = present && OnDiscInserted();
    if (!present) OnDiscRemoved();
    return;
  }
  unanswered = 0;
  if (lastMode == MCI_MODE_PLAY && !scanning) FollowDrive();
}

// Shows where the playing drive is. It plays from the requested track to the end of the disc; the order
// decides where playing starts and what happens at the last entry and under repeat.
void CCDDevice::FollowDrive() {
  const Tmsf now = drive.QueryPosition();
  if (now == position || now.track == 0) return;
  position = now;
  if (now.track != CurrentEntry()) {
    if (repeatMode == RepeatMode::kOne) {
      PlayEntry();
      return;
    }
    if (AtLastEntry()) {
      if (repeatMode == RepeatMode::kAll) {
        orderIndex = 0;
        ShowEntry();
        PlayEntry();
      } else {
        Stop();
      }
      return;
    }
    OnTrackChange(now.track);
  } else if (now.track != shownTrack) {
    ShowTrack(now.track);  // the drive was on a track that the order leaves out
  }
  ShowCdTime(position);
}

// A track that the order leaves out is shown and plays on; the index stays on the entry last played.
void CCDDevice::OnTrackChange(int track) {
  if (const int index = IndexOf(track); index >= 0) orderIndex = index;
  if (track == shownTrack) return;
  SetDisplayElement(kTrackLabel, 1);
  ShowTrack(track);
}

void CCDDevice::OnModeChange(std::uint32_t mode) {
  switch (mode) {
    case MCI_MODE_NOT_READY:
      playState = PlayState::kStopped;
      SetDisplayText("Not Ready");
      break;
    case MCI_MODE_STOP:
      if (lastMode == MCI_MODE_OPEN) ClearDisplayText();
      if (playState != PlayState::kPaused) playState = PlayState::kStopped;
      break;
    case MCI_MODE_PLAY: playState = PlayState::kPlaying; break;
    case MCI_MODE_PAUSE: playState = PlayState::kPaused; break;
    case MCI_MODE_OPEN:
      playState = PlayState::kStopped;
      SetDisplayText("No disc loaded");
      break;
    default: break;
  }
  lastMode = mode;
  UpdateStateLamps();
  UpdateButtonStates();
}

// Answers false when the disc is to be read again at the next tick.
bool CCDDevice::OnDiscInserted() {
  const std::optional<bool> audio = drive.QueryFirstTrackIsAudio();
  if (!audio && IsWaitedFor()) return false;
  if (!audio.value_or(false)) {
    audioDisc = false;
    SetDisplayText("Non-AudioCD inserted");
    return true;
  }
  if (!ReadTracks() && IsWaitedFor()) return false;
  audioDisc = true;
  position = {};
  RegisterDisc();
  LoadSettings();
  BuildPlayOrder();
  ApplyPlayOrder();
  ShowDisplayTime(0);
  SetDisplayElement(kTrackLabel, 1);
  ShowDisplayNumber(CurrentEntry(), false, false);
  SetDisplayElement(kOfLabel, 1);
  ShowDisplayNumber(itemCount, false, true);
  const IniSnapshot saved = store.Read();
  discTitle = saved.String(discId, "Title", kLongestTitle);
  discArtist = saved.String(discId, "Artist", kLongestTitle);
  return true;
}

// What the drive does not tell is 0; then the answer is false.
bool CCDDevice::ReadTracks() {
  const std::optional<int> count = drive.QueryTrackCount();
  bool all = count.has_value();
  itemCount = count.value_or(0);
  for (int track = 1; track <= itemCount; ++track) {
    const std::optional<int> length = drive.QueryTrackLength(track);
    all = all && length;
    trackLength[static_cast<std::size_t>(track - 1)] = length.value_or(0);
  }
  return all;
}

void CCDDevice::OnDiscRemoved() {
  audioDisc = false;
  scanning = false;
  ClearDisplayTime();
  ClearDisplayNumbers();
}

void CCDDevice::RegisterDisc() {
  discId = DiscIdentifier(std::span(trackLength).first(static_cast<std::size_t>(itemCount)));
  store.Update([this](IniDocument& document) {
    if (!IsDiscKnown(document, discId)) AddDisc(document, discId, itemCount, LoadText(IDS_TRACK));
  });
}

bool CCDDevice::Play(int track, int /*reserved*/) {
  if (!audioDisc) {
    if (drive.QueryMode() == MCI_MODE_OPEN) Eject();
    return true;
  }
  if (track == 0 && playState == PlayState::kStopped) track = CurrentEntry();
  playState = PlayState::kPlaying;
  ReportMciError(drive.Play(track, mainWindow));
  // The next tick takes the drive's mode for a new one: it puts the play state right when the drive does not
  // play, or no more, for its disc was exchanged.
  lastMode = 0;
  return true;
}

void CCDDevice::PlayEntry() { Play(CurrentEntry(), 0); }

bool CCDDevice::Pause() {
  if (!audioDisc) return true;
  if (playState == PlayState::kPaused) return Play(0, 0);
  if (playState == PlayState::kPlaying) {
    ReportMciError(drive.Pause());
    playState = PlayState::kPaused;
  }
  return true;
}

bool CCDDevice::Stop() {
  if (!audioDisc) return true;
  playState = PlayState::kStopped;
  ReportMciError(drive.Stop());
  drive.SeekTo({CurrentEntry(), 0, 0, 0}, false);
  if (shownTrack != CurrentEntry()) ShowEntry();
  ShowCdTime({});
  // Some drives call themselves stopped while they are paused: the next tick shall see the change all the
  // same.
  if (lastMode == MCI_MODE_STOP) lastMode = 0;
  return true;
}

bool CCDDevice::Eject() {
  if (drive.QueryMode() == MCI_MODE_OPEN) {
    drive.CloseDoor();
  } else {
    drive.OpenDoor();
  }
  return true;
}

bool CCDDevice::NextItem() {
  if (!audioDisc) return true;
  StepForward();
  ShowEntry();
  PlayEntry();
  return true;
}

bool CCDDevice::PreviousItem() {
  if (!audioDisc) return true;
  StepBack();
  ShowEntry();
  PlayEntry();
  return true;
}

bool CCDDevice::FastForward() {
  ScanTo(quorvex::StepForward);
  return true;
}

bool CCDDevice::Rewind() {
  ScanTo(quorvex::StepBack);
  return true;
}

// Only the display follows the scan; the drive plays on where it was until EndScan.
void CCDDevice::ScanTo(Tmsf (*step)(Tmsf, int)) {
  if (!audioDisc) return;
  if (!scanning) {
    scanning = true;
    scanPlays = playState == PlayState::kPlaying;
    position = drive.QueryPosition();
  }
  position = step(position, TrackLength(position.track));
  ShowCdTime(position);
}

bool CCDDevice::EndScan() {
  if (!scanning) return true;
  scanning = false;
  Pause();
  drive.SeekTo(position, true);
  // The disc may have come to its end meanwhile: the place that was sought counts.
  if (scanPlays && playState == PlayState::kStopped) playState = PlayState::kPaused;
  return Play(0, 0);
}

void CCDDevice::OnMciNotify(std::uint32_t code) {
  if (code != MCI_NOTIFY_SUCCESSFUL || !audioDisc || scanning) return;
  if (repeatMode == RepeatMode::kOne) {
    PlayEntry();
    return;
  }
  orderIndex = 0;
  ShowEntry();
  if (repeatMode == RepeatMode::kAll) {
    PlayEntry();
  } else {
    ShowCdTime({});
  }
}

bool CCDDevice::LoadSettings() {
  const IniSnapshot config = ReadConfig();
  autoPlay = config.Integer("CD", "AutoPlay", 1) != 0;
  stopOnExit = config.Integer("CD", "StopOnExit", 0) != 0;
  usePlayList = config.Integer("CD", "UsePlayList", 0) != 0;
  return true;
}

bool CCDDevice::BuildPlayOrder() {
  orderLength = 0;
  if (usePlayList) SetOrder(StoredPlaylist(store.Read().document, discId));
  if (orderLength == 0) SetPlainOrder();
  if (randomOn) Shuffle();
  return true;
}

bool CCDDevice::ApplyPlayOrder() {
  orderIndex = 0;
  if (!audioDisc) return true;
  if (drive.QueryMode() == MCI_MODE_PLAY) {
    if (const int index = IndexOf(drive.QueryCurrentTrack()); index >= 0) {
      orderIndex = index;
    } else {
      PlayEntry();
    }
  } else if (autoPlay) {
    PlayEntry();
  }
  ShowEntry();
  return true;
}

bool CCDDevice::OnRandomChanged() {
  if (!audioDisc) return true;
  const int current = CurrentEntry();
  BuildPlayOrder();
  if (!randomOn) {
    MoveTo(current);
    return true;
  }
  orderIndex = 0;
  PlayEntry();
  ShowEntry();
  return true;
}

// A store that cannot be read is not edited: the names that it has would be lost.
void CCDDevice::InitPlaylistDialog(HWND dialog) {
  const IniSnapshot saved = store.Read();
  if (saved.state == IniSnapshot::State::kUnreadable) {
    TellUser(dialog, kCannotRead);
    ::EndDialog(dialog, 0);
    return;
  }
  const std::span<const int> lengths(trackLength.data(), static_cast<std::size_t>(itemCount));
  EditorOf(dialog) =
      PlaylistEditor(saved.document, discId, {discTitle, discArtist}, lengths, LoadText(IDS_TRACK));
  ShowDisc(dialog);
  ShowStoredPlaylist(dialog, StoredPlaylist(saved.document, discId));
  UpdatePlaylistTotals(dialog, IDC_PLAYLIST);
}

void CCDDevice::UpdatePlaylistTotals(HWND dialog, int /*listId*/) { ShowPlaylistTotals(dialog); }

void CCDDevice::SavePlaylistDialog(HWND dialog) {
  const DiscNames entered = EnteredNames(dialog);
  const IniFile::Result result =
      store.Update([&](IniDocument& document) { EditorOf(dialog).Save(document, entered); });
  if (result == IniFile::Result::kDone) {
    ::EndDialog(dialog, 1);
  } else {
    TellUser(dialog, result == IniFile::Result::kUnreadable ? kCannotRead : kCannotWrite);
  }
}

void CCDDevice::RenamePlaylistTrack(HWND dialog) { NameTrack(dialog); }

void CCDDevice::ShowEntry() { ShowTrack(CurrentEntry()); }

void CCDDevice::ShowTrack(int track) {
  shownTrack = track;
  ShowDisplayNumber(track, false, false);
  ShowTrackTitle(track);
}

void CCDDevice::ShowTrackTitle(int track) {
  const IniSnapshot saved = store.Read();
  const bool unreadable = saved.state == IniSnapshot::State::kUnreadable;
  SetDisplayText(unreadable ? kCannotRead : saved.String(discId, std::to_string(track), kLongestTitle));
}

int CCDDevice::TrackLength(int track) const {
  return track >= 1 && track <= itemCount ? trackLength[static_cast<std::size_t>(track - 1)] : 0;
}

}  // namespace quorvex
