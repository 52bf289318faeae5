#include "devices/open_sequence.h"

#include <windows.h>

#include "devices/current_device.h"
#include "devices/null_device.h"
#include "devices/shared_state.h"
#include "panel/main_window.h"
#include "panel/status_display.h"
#include "video/video_window.h"

namespace quorvex {

bool OpenCurrentDevice() {
  SetPointer(IDC_WAIT);
  const bool open = currentDevice->Open() && currentDevice->QueryControls() && currentDevice->Activate();
  if (open) {
    currentDevice->UpdateStateLamps();
    SetDisplayText(currentDevice->notice);
  } else {
    currentCaptureDevice = -1;
    EndCurrentDevice(std::string(currentDevice->refusal));
  }
  SetPointer(IDC_ARROW);
  return open;
}

void EndCurrentDevice(const std::string& text) {
  currentDevice.reset();
  DeleteVideoWindow();
  const CNullDevice none;  // a device that is made empties the display and puts the lamps out
  SetDisplayText(text);
}

}  // namespace quorvex
