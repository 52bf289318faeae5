// How a COM method hands out a value.
#pragma once

#include <windows.h>

namespace quorvex {

template <typename Value, typename Given>
HRESULT Answer(Value* target, Given value) {
  if (target == nullptr) return E_POINTER;
  *target = static_cast<Value>(value);
  return S_OK;
}

}  // namespace quorvex
