#include "devices/cd/cd_drive.h"

#include <algorithm>

namespace quorvex {

MCIERROR CdDrive::SetTimeFormat() {
  MCI_SET_PARMS parameters{};
  parameters.dwTimeFormat = MCI_FORMAT_TMSF;
  return Send(MCI_SET, MCI_SET_TIME_FORMAT, parameters);
}

bool CdDrive::QueryMediaPresent() { return Query(MCI_STATUS_MEDIA_PRESENT) != 0; }
bool CdDrive::QueryFirstTrackIsAudio() { return Query(MCI_CDA_STATUS_TYPE_TRACK, 1) == MCI_CDA_TRACK_AUDIO; }
int CdDrive::QueryTrackCount() {
  return static_cast<int>(std::min<std::uint32_t>(Query(MCI_STATUS_NUMBER_OF_TRACKS), kMaxTracks));
}
int CdDrive::QueryTrackLength(int track) { return LengthInSeconds(Query(MCI_STATUS_LENGTH, track)); }
Tmsf CdDrive::QueryPosition() { return Tmsf::Unpack(Query(MCI_STATUS_POSITION)); }
int CdDrive::QueryCurrentTrack() { return static_cast<int>(Query(MCI_STATUS_CURRENT_TRACK)); }

MCIERROR CdDrive::Play(int track, HWND notified) {
  MCI_PLAY_PARMS parameters{};
  parameters.dwCallback = reinterpret_cast<DWORD_PTR>(notified);
  parameters.dwFrom = Tmsf{track, 0, 0, 0}.Pack();
  return Send(MCI_PLAY, MCI_NOTIFY | (track != 0 ? MCI_FROM : 0), parameters);
}

MCIERROR CdDrive::Pause() { return Send(MCI_PAUSE); }
MCIERROR CdDrive::Stop() { return Send(MCI_STOP); }

void CdDrive::SeekTo(Tmsf position, bool wait) {
  MCI_SEEK_PARMS parameters{};
  parameters.dwTo = position.Pack();
  Send(MCI_SEEK, MCI_TO | (wait ? MCI_WAIT : 0), parameters);
}

}  // namespace quorvex
