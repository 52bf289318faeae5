// The one device that every key goes to.
#pragma once

#include <memory>

#include "devices/device.h"

namespace quorvex {

// Null when no device is open.
extern std::unique_ptr<CDevice> currentDevice;

}  // namespace quorvex
