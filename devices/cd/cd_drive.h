// The CD drive as the platform's MCI shows it: one open device, its questions and commands. Codes are MCI's
// own.
#pragma once

#include <windows.h>

#include <mmsystem.h>

#include <cstdint>

#include "devices/cd/tmsf.h"

namespace quorvex {

// More tracks than a driver may report for a disc (an audio disc has at most 99).
inline constexpr int kMaxTracks = 1000;

class CdDrive {
 public:
  CdDrive() = default;
  CdDrive(const CdDrive&) = delete;
  CdDrive& operator=(const CdDrive&) = delete;

  // Opens the driver for sharing; answers MCI's code, 0 for success.
  MCIERROR Open();
  // Positions are track, minutes, seconds, frames from here on.
  MCIERROR SetTimeFormat();
  MCIERROR Close();
  [[nodiscard]] bool IsOpen() const { return device != 0; }

  // One of MCI_MODE_...; 0 when the driver does not answer. So with the other questions.
  std::uint32_t QueryMode();
  bool QueryMediaPresent();
  bool QueryFirstTrackIsAudio();
  int QueryTrackCount();            // at most kMaxTracks
  int QueryTrackLength(int track);  // in whole seconds
  Tmsf QueryPosition();
  int QueryCurrentTrack();

  // Plays to the end of the disc, from the start of `track` or, with 0, from where the drive stands;
  // MM_MCINOTIFY comes to `notified` when the play command ends.
  MCIERROR Play(int track, HWND notified);
  MCIERROR Pause();
  MCIERROR Stop();
  void SeekTo(Tmsf position, bool wait);
  void OpenDoor();
  void CloseDoor();

 private:
  std::uint32_t Query(DWORD item, int track = 0);

  MCIDEVICEID device = 0;
};

}  // namespace quorvex
