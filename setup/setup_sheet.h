// The Setup sheet: the options of the program and of its devices, on six pages.
#pragma once

namespace quorvex {

// The shell's own options, which the sheet changes where they are.
struct ShellOptions {
  int& autoStartDevice;
  bool& disableApm;
  bool& disableScreenSaver;
  void (*apply)();  // follows the changed options
};

// Shows the sheet over the control panel, at the page of the current device, until it is closed.
void ShowSetupSheet(const ShellOptions& options);

}  // namespace quorvex
