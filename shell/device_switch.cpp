#include "shell/device_switch.h"

#include <memory>

#include "devices/cd/cd_device.h"
#include "devices/current_device.h"
#include "devices/dvd/dvd_device.h"
#include "devices/media/file_device.h"
#include "devices/null_device.h"
#include "devices/open_sequence.h"
#include "devices/shared_state.h"
#include "panel/status_display.h"
#include "shell/actions.h"
#include "video/video_window.h"

namespace quorvex {
namespace {

bool IsCurrent(DeviceType type) { return currentDevice && currentDevice->kind == type; }

// A new device; null for television, which this program has no player for.
std::unique_ptr<CDevice> MakeDevice(DeviceType type) {
  switch (type) {
    case DeviceType::kNone: return std::make_unique<CNullDevice>();
    case DeviceType::kDvd: return std::make_unique<CDVDDevice>();
    case DeviceType::kCd: return std::make_unique<CCDDevice>();
    case DeviceType::kFile: return std::make_unique<CFileDevice>();
    case DeviceType::kTv: break;
  }
  return nullptr;
}

// Puts a new device in place of the current one. Without one nothing is current, and the text line says so.
bool Replace(DeviceType type) {
  currentDevice.reset();
  currentDevice = MakeDevice(type);
  if (currentDevice) {
    currentDeviceType = type;
    return true;
  }
  SwitchToNone();
  SetDisplayText("No player for TV/CAP");
  return false;
}

}  // namespace

bool SwitchToDvd() {
  if (IsCurrent(DeviceType::kDvd)) return true;
  if (!Replace(DeviceType::kDvd) || !OpenCurrentDevice()) return false;
  PlayAtRate(1.0);
  return true;
}

bool SwitchToCd() {
  if (IsCurrent(DeviceType::kCd)) return true;
  DeleteVideoWindow();
  return Replace(DeviceType::kCd) && OpenCurrentDevice();
}

bool SwitchToTv(int captureDevice) {
  if (IsCurrent(DeviceType::kTv) && currentCaptureDevice == captureDevice) return true;
  if (!Replace(DeviceType::kTv)) return false;
  currentCaptureDevice = captureDevice;
  return OpenCurrentDevice();
}

bool SwitchToFile() { return Replace(DeviceType::kFile) && currentDevice->LoadMedia(); }

void SwitchToNone() {
  Replace(DeviceType::kNone);
  OpenCurrentDevice();
}

}  // namespace quorvex
