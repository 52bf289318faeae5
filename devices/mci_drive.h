// A disc drive as the platform's MCI shows it, whatever is in it: opened for sharing, its mode, its door.
// Codes are MCI's own.
#pragma once

#include <windows.h>

#include <mmsystem.h>

#include <cstdint>

namespace quorvex {

class MciDrive {
 public:
  MciDrive() = default;
  MciDrive(const MciDrive&) = delete;
  MciDrive& operator=(const MciDrive&) = delete;

  // Opens the system's first CD-audio drive for sharing; answers MCI's code, 0 for success.
  MCIERROR Open();
  MCIERROR Close();
  [[nodiscard]] bool IsOpen() const { return device != 0; }

  // One of MCI_MODE_...; 0 when the driver does not answer.
  std::uint32_t QueryMode();
  void OpenDoor();
  void CloseDoor();

 protected:
  // The answer to one of MCI_STATUS_..., of a track where `track` is not 0; 0 when the driver does not
  // answer.
  std::uint32_t Query(DWORD item, int track = 0);

  // Sends a command with its parameter record, or without one.
  template <typename Parameters>
  MCIERROR Send(UINT message, DWORD_PTR flags, Parameters& parameters) {
    // MCI takes its parameter records as a number.
    return ::mciSendCommandA(device, message, flags, reinterpret_cast<DWORD_PTR>(&parameters));
  }
  MCIERROR Send(UINT message, DWORD_PTR flags = 0) { return ::mciSendCommandA(device, message, flags, 0); }

 private:
  MCIDEVICEID device = 0;
};

}  // namespace quorvex
