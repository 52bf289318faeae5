// The one device that every key goes to.
#pragma once

#include <memory>

#include "devices/device.h"

namespace quorvex {

// Null when no device is open.
extern std::unique_ptr<CDevice> currentDevice;

// Lets the video window and the status display reach the current device.
void ConnectPicture();

}  // namespace quorvex
