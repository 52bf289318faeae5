// What a thread that calls other filters needs.
#pragma once

#include <objbase.h>

#include "platform/common/com_object.h"

namespace quorvex {

// Receivers are COM objects; the threads that call them belong to no single apartment, and need this module
// for as long as they run.
class ComThread : ModuleUser {
 public:
  ComThread() { ::CoInitializeEx(nullptr, COINIT_MULTITHREADED); }
  ComThread(const ComThread&) = delete;
  ComThread& operator=(const ComThread&) = delete;
  ~ComThread() { ::CoUninitialize(); }
};

}  // namespace quorvex
