// Asks whether to begin: everything is ready to record.
#pragma once

#include <windows.h>

namespace quorvex {

// Shows the question over the control panel, until it is answered; whether to record.
bool AskReadyToRecord();

}  // namespace quorvex
