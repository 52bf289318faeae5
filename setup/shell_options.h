// What the shell hands to the Setup sheet.
#pragma once

namespace quorvex {

// The shell's own options, which the sheet changes where they are.
struct ShellOptions {
  int& autoStartDevice;
  bool& disableApm;
  bool& disableScreenSaver;
  void (*apply)();  // follows the changed options
};

}  // namespace quorvex
