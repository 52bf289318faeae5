#include "devices/cd/cd_drive.h"

#include <algorithm>

namespace quorvex {
namespace {

// MCI takes its parameter records as a number.
template <typename Parameters>
MCIERROR Send(MCIDEVICEID device, UINT message, DWORD_PTR flags, Parameters& parameters) {
  return ::mciSendCommandA(device, message, flags, reinterpret_cast<DWORD_PTR>(&parameters));
}

MCIERROR Send(MCIDEVICEID device, UINT message, DWORD_PTR flags = 0) {
  return ::mciSendCommandA(device, message, flags, 0);
}

}  // namespace

MCIERROR CdDrive::Open() {
  MCI_OPEN_PARMSA parameters{};
  // The device type is given as a number in place of a name.
  parameters.lpstrDeviceType = reinterpret_cast<LPSTR>(static_cast<ULONG_PTR>(MCI_DEVTYPE_CD_AUDIO));
  const MCIERROR error = Send(0, MCI_OPEN, MCI_OPEN_TYPE | MCI_OPEN_TYPE_ID | MCI_OPEN_SHAREABLE, parameters);
  device = error == 0 ? parameters.wDeviceID : 0;
  return error;
}

MCIERROR CdDrive::SetTimeFormat() {
  MCI_SET_PARMS parameters{};
  parameters.dwTimeFormat = MCI_FORMAT_TMSF;
  return Send(device, MCI_SET, MCI_SET_TIME_FORMAT, parameters);
}

MCIERROR CdDrive::Close() {
  const MCIERROR error = Send(device, MCI_CLOSE);
  device = 0;
  return error;
}

std::uint32_t CdDrive::Query(DWORD item, int track) {
  MCI_STATUS_PARMS parameters{};
  parameters.dwItem = item;
  parameters.dwTrack = static_cast<DWORD>(track);
  const DWORD_PTR flags = MCI_WAIT | MCI_STATUS_ITEM | (track != 0 ? MCI_TRACK : 0);
  return Send(device, MCI_STATUS, flags, parameters) == 0 ? static_cast<std::uint32_t>(parameters.dwReturn)
                                                          : 0;
}

std::uint32_t CdDrive::QueryMode() { return Query(MCI_STATUS_MODE); }
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
  return Send(device, MCI_PLAY, MCI_NOTIFY | (track != 0 ? MCI_FROM : 0), parameters);
}

MCIERROR CdDrive::Pause() { return Send(device, MCI_PAUSE); }
MCIERROR CdDrive::Stop() { return Send(device, MCI_STOP); }

void CdDrive::SeekTo(Tmsf position, bool wait) {
  MCI_SEEK_PARMS parameters{};
  parameters.dwTo = position.Pack();
  Send(device, MCI_SEEK, MCI_TO | (wait ? MCI_WAIT : 0), parameters);
}

void CdDrive::OpenDoor() { Send(device, MCI_SET, MCI_SET_DOOR_OPEN); }
void CdDrive::CloseDoor() { Send(device, MCI_SET, MCI_SET_DOOR_CLOSED); }

}  // namespace quorvex
