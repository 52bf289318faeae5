// The dialog that sets room aside for the capture file.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "devices/tv/capture_size.h"

namespace quorvex {

class CTVDevice;

class CaptureFileDialog {
 public:
  explicit CaptureFileDialog(CTVDevice& itsDevice) : device(itsDevice) {}

  // Shows the dialog until it is closed. OK gives the device its capture file; answers whether it was OK.
  bool Run(HWND owner);

 private:
  static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  INT_PTR OnCommand(int control);
  void OnStart();
  void OnChange();
  void OnSizeTyped();
  void OnOk();
  void ShowRoom(const CaptureRoom& room);

  CTVDevice& device;
  HWND dialog = nullptr;
  std::string path;             // of the file chosen
  std::uint16_t size = 0;       // megabytes, when OK has taken it
  std::optional<int> free = 0;  // megabytes that it may have; none where the disk does not tell
};

}  // namespace quorvex
