#include "devices/current_device.h"

namespace quorvex {

std::unique_ptr<CDevice> currentDevice;

}  // namespace quorvex
