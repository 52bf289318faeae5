// Puts a test's function in the place of one of the platform's while this lives, for the calls of this
// program alone: the system's own libraries go on calling theirs.
#pragma once

#include <windows.h>

namespace quorvex {

template <typename Function>
class ImportHook {
 public:
  // `itsSlot`: the program's import of the function (__imp_NAME, as the linker calls it).
  ImportHook(Function& itsSlot, Function other) : slot(itsSlot), platform(itsSlot) { Put(other); }
  ImportHook(const ImportHook&) = delete;
  ImportHook& operator=(const ImportHook&) = delete;
  ~ImportHook() { Put(platform); }

  // The platform's function.
  [[nodiscard]] Function Platform() const { return platform; }

 private:
  void Put(Function function) {
    DWORD before = 0;
    ::VirtualProtect(&slot, sizeof slot, PAGE_READWRITE, &before);
    slot = function;
    ::VirtualProtect(&slot, sizeof slot, before, &before);
  }

  Function& slot;
  Function platform;
};

}  // namespace quorvex
