// What every command of the remote control does, and its key.
#pragma once

#include <windows.h>

#include <span>

namespace quorvex {

// A key as accelerator tables hold it: FVIRTKEY and FCONTROL or FALT with a virtual key, or a plain
// character.
struct CommandKey {
  BYTE flags = 0;
  WORD code = 0;  // 0: the command has no key
};

struct CommandRow {
  int command;
  CommandKey key;
  void (*action)();
};

// The commands from kCommandPlay to kCommandVideoAdjustment in ascending order; numbers between them that
// have no row do nothing.
std::span<const CommandRow> CommandTable();

// Does what a command number asks, also for the ranges of numbers that stand for choices. Unknown numbers do
// nothing.
void RunCommand(int command);

}  // namespace quorvex
