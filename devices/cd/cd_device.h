// The audio-CD device: polls the drive five times a second, follows it on the display, and plays its tracks
// in the play order.
#pragma once

#include <array>
#include <string>

#include "base/ini_file.h"
#include "devices/cd/cd_drive.h"
#include "devices/device.h"

namespace quorvex {

class CCDDevice : public CDevice {
 public:
  CCDDevice();
  ~CCDDevice() override;

  // The driver is opened by the first tick, and again by every tick until it can be.
  bool Open() override { return true; }
  bool QueryControls() override { return true; }
  bool Activate() override;
  bool Close() override { return true; }

  bool Play(int track, int reserved) override;
  bool Eject() override;  // opens the tray, or closes it when it is open
  bool Pause() override;
  bool Stop() override;
  bool NextItem() override;
  bool PreviousItem() override;
  bool FastForward() override;
  bool EndScan() override;
  bool Rewind() override;
  void OnMciNotify(std::uint32_t code) override;
  void OnTick() override;
  bool BuildPlayOrder() override;
  bool LoadSettings() override;
  bool ApplyPlayOrder() override;
  bool OnRandomChanged() override;

  // The play-list editor. It starts with the disc that was inserted last and keeps to that one; what was
  // played and is shown changes with the next disc, the order with the next BuildPlayOrder.
  void InitPlaylistDialog(HWND dialog) override;
  void UpdatePlaylistTotals(HWND dialog, int listId) override;
  void SavePlaylistDialog(HWND dialog) override;  // ends the dialog, unless the store refuses
  void RenamePlaylistTrack(HWND dialog) override;

  [[nodiscard]] const std::string& DiscId() const { return discId; }

 private:
  bool OpenCdAudio();
  bool IsWaitedFor();
  void OnModeChange(std::uint32_t mode);
  bool OnDiscInserted();
  bool ReadTracks();
  void OnDiscRemoved();
  void FollowDrive();
  void OnTrackChange(int track);
  void ScanTo(Tmsf (*step)(Tmsf, int));
  void PlayEntry();
  void ShowEntry();
  void ShowTrack(int track);
  void ShowTrackTitle(int track);
  [[nodiscard]] int TrackLength(int track) const;
  void RegisterDisc();

  CdDrive drive;
  bool ready = false;  // the drive is open and takes our positions
  int unanswered = 0;  // questions about the disc that it left open, one tick after another
  std::uint32_t lastMode = 0;
  bool mediaPresent = false;
  bool audioDisc = false;                     // while false only Eject and the tray-closing Play act
  bool scanPlays = false;                     // the scan has begun while the drive played
  Tmsf position;                              // last seen while playing; the scan position while scanning
  int shownTrack = 0;                         // the track whose number and title are shown
  std::array<int, kMaxTracks> trackLength{};  // whole seconds, track 1 first
  std::string discId;
  std::string discTitle;
  std::string discArtist;
  bool autoPlay = true;
  bool stopOnExit = false;
  bool usePlayList = false;
  IniFile store;  // the CD information store
};

}  // namespace quorvex
