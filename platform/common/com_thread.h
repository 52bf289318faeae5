// What a thread that calls other filters needs.
#pragma once

#include <objbase.h>

namespace quorvex {

// Receivers are COM objects; the threads that call them belong to no single apartment.
class ComThread {
 public:
  ComThread() { ::CoInitializeEx(nullptr, COINIT_MULTITHREADED); }
  ComThread(const ComThread&) = delete;
  ComThread& operator=(const ComThread&) = delete;
  ~ComThread() { ::CoUninitialize(); }
};

}  // namespace quorvex
