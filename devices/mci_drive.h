// A disc drive as the platform's MCI shows it, whatever is in it: opened for sharing, its mode, its door.
// Codes are MCI's own. A driver that waits longer than the user wants to, and lets the program run meanwhile
// as MCI asks, is broken off; its command has then failed.
#pragma once

#include <windows.h>

#include <mmsystem.h>

#include <cstdint>
#include <optional>

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

  // Whether the last question was broken off for the user, who pressed a key meanwhile.
  [[nodiscard]] static bool IsBrokenOff();

  // One of MCI_MODE_...; 0 when the driver does not answer.
  std::uint32_t QueryMode();
  void OpenDoor();
  void CloseDoor();

 protected:
  // The answer to one of MCI_STATUS_..., of a track where `track` is not 0; none when the driver refuses.
  std::optional<std::uint32_t> Ask(DWORD item, int track = 0);

  // Sends a command with its parameter record, or without one.
  template <typename Parameters>
  MCIERROR Send(UINT message, DWORD_PTR flags, Parameters& parameters) {
    // MCI takes its parameter records as a number.
    return SendBlock(message, flags, reinterpret_cast<DWORD_PTR>(&parameters));
  }
  MCIERROR Send(UINT message, DWORD_PTR flags = 0) { return SendBlock(message, flags, 0); }

 private:
  MCIERROR SendBlock(UINT message, DWORD_PTR flags, DWORD_PTR parameters);

  MCIDEVICEID device = 0;
};

}  // namespace quorvex
