#include "devices/cd/cd_drive.h"

#include <algorithm>

namespace quorvex {

MCIERROR CdDrive::SetTimeFormat() {
  MCI_SET_PARMS parameters{};
  parameters.dwTimeFormat = MCI_FORMAT_TMSF;
  return Send(MCI_SET, MCI_SET_TIME_FORMAT, parameters);
}

std::optional<bool> CdDrive::QueryMediaPresent() {
  const std::optional<std::uint32_t> answer = Ask(MCI_STATUS_MEDIA_PRESENT);
  return answer ? std::optional(*answer != 0) : std::nullopt;
}

std::optional<bool> CdDrive::QueryFirstTrackIsAudio() {
  const std::optional<std::uint32_t> answer = Ask(MCI_CDA_STATUS_TYPE_TRACK, 1);
  return answer ? std::optional(*answer == MCI_CDA_TRACK_AUDIO) : std::nullopt;
}

std::optional<int> CdDrive::QueryTrackCount() {
  const std::optional<std::uint32_t> answer = Ask(MCI_STATUS_NUMBER_OF_TRACKS);
  return answer ? std::optional(static_cast<int>(std::min<std::uint32_t>(*answer, kMaxTracks)))
                : std::nullopt;
}

std::optional<int> CdDrive::QueryTrackLength(int track) {
  const std::optional<std::uint32_t> answer = Ask(MCI_STATUS_LENGTH, track);
  return answer ? std::optional(LengthInSeconds(*answer)) : std::nullopt;
}

Tmsf CdDrive::QueryPosition() { return Tmsf::Unpack(Ask(MCI_STATUS_POSITION).value_or(0)); }
int CdDrive::QueryCurrentTrack() { return static_cast<int>(Ask(MCI_STATUS_CURRENT_TRACK).value_or(0)); }

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
