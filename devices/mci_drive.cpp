#include "devices/mci_drive.h"

namespace quorvex {
namespace {

constexpr ULONGLONG kLongestCommandMs = 10'000;
constexpr ULONGLONG kLongestForUserMs = 300;  // that a question keeps a key waiting
constexpr UINT kUserActs = QS_KEY | QS_MOUSEBUTTON | QS_POSTMESSAGE;

// The command that is under way.
struct Wait {
  ULONGLONG since = 0;
  bool question = false;  // it may be put again
  bool brokenOff = false;
};
Wait wait;

// Called by a driver that waits; not 0 ends that. Nothing may be dispatched here: a device's operation is
// under way.
UINT CALLBACK MayWaitNoLonger(MCIDEVICEID /*device*/, DWORD /*data*/) {
  const ULONGLONG waited = ::GetTickCount64() - wait.since;
  const bool userWaits =
      wait.question && waited >= kLongestForUserMs && HIWORD(::GetQueueStatus(kUserActs)) != 0;
  wait.brokenOff = wait.brokenOff || userWaits;
  return userWaits || waited >= kLongestCommandMs ? 1 : 0;
}

}  // namespace

bool MciDrive::IsBrokenOff() { return wait.brokenOff; }

MCIERROR MciDrive::SendBlock(UINT message, DWORD_PTR flags, DWORD_PTR parameters) {
  wait = {::GetTickCount64(), message == MCI_STATUS, false};
  return ::mciSendCommandA(device, message, flags, parameters);
}

MCIERROR MciDrive::Open() {
  MCI_OPEN_PARMSA parameters{};
  // The device type is given as a number in place of a name.
  parameters.lpstrDeviceType = reinterpret_cast<LPSTR>(static_cast<ULONG_PTR>(MCI_DEVTYPE_CD_AUDIO));
  device = 0;
  const MCIERROR error = Send(MCI_OPEN, MCI_OPEN_TYPE | MCI_OPEN_TYPE_ID | MCI_OPEN_SHAREABLE, parameters);
  if (error != 0) return error;
  device = parameters.wDeviceID;
  ::mciSetYieldProc(device, MayWaitNoLonger, 0);
  return error;
}

MCIERROR MciDrive::Close() {
  const MCIERROR error = Send(MCI_CLOSE);
  device = 0;
  return error;
}

std::optional<std::uint32_t> MciDrive::Ask(DWORD item, int track) {
  MCI_STATUS_PARMS parameters{};
  parameters.dwItem = item;
  parameters.dwTrack = static_cast<DWORD>(track);
  const DWORD_PTR flags = MCI_WAIT | MCI_STATUS_ITEM | (track != 0 ? MCI_TRACK : 0);
  if (Send(MCI_STATUS, flags, parameters) != 0) return std::nullopt;
  return static_cast<std::uint32_t>(parameters.dwReturn);
}

std::uint32_t MciDrive::QueryMode() { return Ask(MCI_STATUS_MODE).value_or(0); }
void MciDrive::OpenDoor() { Send(MCI_SET, MCI_SET_DOOR_OPEN); }
void MciDrive::CloseDoor() { Send(MCI_SET, MCI_SET_DOOR_CLOSED); }

}  // namespace quorvex
