// The empty device. It never opens, which is how the router closes whatever device was open.
#pragma once

#include "devices/device.h"

namespace quorvex {

class CNullDevice : public CDevice {
 public:
  CNullDevice() : CDevice(DeviceType::kNone) {}
  bool Open() override { return false; }
  bool QueryControls() override { return false; }
  bool Activate() override { return false; }
  bool Close() override { return true; }
};

}  // namespace quorvex
