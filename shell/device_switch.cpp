#include "shell/device_switch.h"

#include <memory>

#include "devices/cd/cd_device.h"
#include "devices/current_device.h"
#include "devices/dvd/dvd_device.h"
#include "devices/media/file_device.h"
#include "devices/null_device.h"
#include "devices/open_sequence.h"
#include "devices/shared_state.h"
#include "devices/tv/tv_device.h"
#include "panel/status_display.h"
#include "shell/actions.h"
#include "video/video_window.h"

namespace quorvex {
namespace {

bool IsCurrent(DeviceType type) { return currentDevice && currentDevice->kind == type; }

std::unique_ptr<CDevice> MakeDevice(DeviceType type) {
  switch (type) {
    case DeviceType::kTv: return std::make_unique<CTVDevice>();
    case DeviceType::kDvd: return std::make_unique<CDVDDevice>();
    case DeviceType::kCd: return std::make_unique<CCDDevice>();
    case DeviceType::kFile: return std::make_unique<CFileDevice>();
    case DeviceType::kNone: break;
  }
  return std::make_unique<CNullDevice>();
}

bool IsShown(int captureDevice) {
  if (!IsCurrent(DeviceType::kTv) || currentCaptureDevice != captureDevice) return false;
  const auto* const card = dynamic_cast<const CTVDevice*>(currentDevice.get());
  return card == nullptr || !card->IsGone();
}

// Puts a new device in place of the current one.
void Replace(DeviceType type) {
  currentDevice.reset();
  currentDevice = MakeDevice(type);
  currentDeviceType = type;
}

}  // namespace

bool SwitchToDvd() {
  if (IsCurrent(DeviceType::kDvd)) return true;
  Replace(DeviceType::kDvd);
  if (!OpenCurrentDevice()) return false;
  PlayAtRate(1.0);
  return true;
}

bool SwitchToCd() {
  if (IsCurrent(DeviceType::kCd)) return true;
  DeleteVideoWindow();
  Replace(DeviceType::kCd);
  return OpenCurrentDevice();
}

bool SwitchToTv(int captureDevice) {
  if (IsShown(captureDevice)) return true;
  Replace(DeviceType::kTv);
  currentCaptureDevice = captureDevice;
  return OpenCurrentDevice();
}

bool SwitchToFile() {
  Replace(DeviceType::kFile);
  if (currentDevice->LoadMedia()) return true;
  DeleteVideoWindow();  // of the device before
  if (currentDevice) SetDisplayText("The playlist is empty");
  return false;
}

void SwitchToNone() {
  Replace(DeviceType::kNone);
  OpenCurrentDevice();
}

}  // namespace quorvex
