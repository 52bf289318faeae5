#include "devices/open_sequence.h"

#include <windows.h>

#include "devices/current_device.h"
#include "devices/shared_state.h"
#include "panel/main_window.h"
#include "panel/status_display.h"
#include "video/video_window.h"

namespace quorvex {
namespace {

void DropFailedDevice() {
  currentDeviceType = DeviceType::kNone;
  currentCaptureDevice = -1;
  currentDevice->UpdateStateLamps();
  SetDisplayText(currentDevice->refusal);
  currentDevice.reset();
  DeleteVideoWindow();
}

}  // namespace

bool OpenCurrentDevice() {
  SetPointer(IDC_WAIT);
  const bool open = currentDevice->Open() && currentDevice->QueryControls() && currentDevice->Activate();
  if (open) {
    currentDevice->UpdateStateLamps();
    SetDisplayText(currentDevice->notice);
  } else {
    DropFailedDevice();
  }
  SetPointer(IDC_ARROW);
  return open;
}

}  // namespace quorvex
