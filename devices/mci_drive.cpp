#include "devices/mci_drive.h"

namespace quorvex {

MCIERROR MciDrive::Open() {
  MCI_OPEN_PARMSA parameters{};
  // The device type is given as a number in place of a name.
  parameters.lpstrDeviceType = reinterpret_cast<LPSTR>(static_cast<ULONG_PTR>(MCI_DEVTYPE_CD_AUDIO));
  device = 0;
  const MCIERROR error = Send(MCI_OPEN, MCI_OPEN_TYPE | MCI_OPEN_TYPE_ID | MCI_OPEN_SHAREABLE, parameters);
  if (error == 0) device = parameters.wDeviceID;
  return error;
}

MCIERROR MciDrive::Close() {
  const MCIERROR error = Send(MCI_CLOSE);
  device = 0;
  return error;
}

std::uint32_t MciDrive::Query(DWORD item, int track) {
  MCI_STATUS_PARMS parameters{};
  parameters.dwItem = item;
  parameters.dwTrack = static_cast<DWORD>(track);
  const DWORD_PTR flags = MCI_WAIT | MCI_STATUS_ITEM | (track != 0 ? MCI_TRACK : 0);
  return Send(MCI_STATUS, flags, parameters) == 0 ? static_cast<std::uint32_t>(parameters.dwReturn) : 0;
}

std::uint32_t MciDrive::QueryMode() { return Query(MCI_STATUS_MODE); }
void MciDrive::OpenDoor() { Send(MCI_SET, MCI_SET_DOOR_OPEN); }
void MciDrive::CloseDoor() { Send(MCI_SET, MCI_SET_DOOR_CLOSED); }

}  // namespace quorvex
