// The Setup sheet: the options of the program and of its devices, on six pages.
#pragma once

#include "setup/shell_options.h"

namespace quorvex {

// Shows the sheet over the control panel, at the page of the current device, until it is closed.
void ShowSetupSheet(const ShellOptions& options);

}  // namespace quorvex
