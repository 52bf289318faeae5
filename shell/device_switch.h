// Choosing the current device: making it, opening it, and what is left when that fails.
#pragma once

namespace quorvex {

// Each answers whether the device is open; a switch to the one that is open already does nothing. After a
// failed switch nothing is open, and the user has been told why.
bool SwitchToDvd();
bool SwitchToCd();
bool SwitchToTv(int captureDevice);

// Replaces whatever is open by a device for files, which opens and starts the current play list itself.
bool SwitchToFile();

// Closes whatever is open.
void SwitchToNone();

}  // namespace quorvex
