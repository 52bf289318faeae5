// The CD drive as the platform's MCI shows it: what can be asked of a disc with music, and how it is played.
#pragma once

#include <optional>

#include "devices/cd/tmsf.h"
#include "devices/mci_drive.h"

namespace quorvex {

// More tracks than a driver may report for a disc (an audio disc has at most 99).
inline constexpr int kMaxTracks = 1000;

class CdDrive : public MciDrive {
 public:
  // Positions are track, minutes, seconds, frames from here on.
  MCIERROR SetTimeFormat();

  // None when the driver refuses.
  std::optional<bool> QueryMediaPresent();
  std::optional<bool> QueryFirstTrackIsAudio();
  std::optional<int> QueryTrackCount();            // at most kMaxTracks
  std::optional<int> QueryTrackLength(int track);  // in whole seconds

  // 0 when the driver refuses.
  Tmsf QueryPosition();
  int QueryCurrentTrack();

  // Plays to the end of the disc, from the start of `track` or, with 0, from where the drive stands;
  // MM_MCINOTIFY comes to `notified` when the play command ends.
  MCIERROR Play(int track, HWND notified);
  MCIERROR Pause();
  MCIERROR Stop();
  void SeekTo(Tmsf position, bool wait);
};

}  // namespace quorvex
