// The CD drive as the platform's MCI shows it: what can be asked of a disc with music, and how it is played.
#pragma once

#include "devices/cd/tmsf.h"
#include "devices/mci_drive.h"

namespace quorvex {

// More tracks than a driver may report for a disc (an audio disc has at most 99).
inline constexpr int kMaxTracks = 1000;

class CdDrive : public MciDrive {
 public:
  // Positions are track, minutes, seconds, frames from here on.
  MCIERROR SetTimeFormat();

  // Each 0 when the driver does not answer.
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
};

}  // namespace quorvex
