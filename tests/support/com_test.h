// Tests that call the platform's COM objects themselves, without the panel.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <objbase.h>

namespace quorvex {

class ComTest : public testing::Test {
 protected:
  ComTest() { ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
  ~ComTest() override { ::CoUninitialize(); }
};

// How long a call takes.
template <typename Call>
ULONGLONG Milliseconds(Call call) {
  const ULONGLONG begin = ::GetTickCount64();
  call();
  return ::GetTickCount64() - begin;
}

}  // namespace quorvex
