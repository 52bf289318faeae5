#include "platform/common/pin_category.h"

#include <uuids.h>

#include <cstring>

#include "base/com_ptr.h"

namespace quorvex {
namespace {

// What the platform's headers for drivers call them.
constexpr HRESULT kNoSuchSet = HRESULT_FROM_WIN32(ERROR_SET_NOT_FOUND);
constexpr HRESULT kNoSuchProperty = HRESULT_FROM_WIN32(ERROR_NOT_FOUND);
constexpr DWORD kSupportsGet = 1;

HRESULT CheckProperty(REFGUID set, DWORD property) {
  if (set != AMPROPSETID_Pin) return kNoSuchSet;
  return property == AMPROPERTY_PIN_CATEGORY ? S_OK : kNoSuchProperty;
}

}  // namespace

HRESULT PinCategory::Set(REFGUID, DWORD, void*, DWORD, void*, DWORD) { return E_NOTIMPL; }

HRESULT PinCategory::Get(REFGUID set, DWORD property, void*, DWORD, void* data, DWORD dataBytes,
                         DWORD* returned) {
  if (const HRESULT result = CheckProperty(set, property); FAILED(result)) return result;
  if (data == nullptr && returned == nullptr) return E_POINTER;
  if (returned != nullptr) *returned = sizeof category;
  if (data == nullptr) return S_OK;
  if (dataBytes < sizeof category) return E_UNEXPECTED;
  std::memcpy(data, &category, sizeof category);
  return S_OK;
}

HRESULT PinCategory::QuerySupported(REFGUID set, DWORD property, DWORD* support) {
  const HRESULT result = CheckProperty(set, property);
  if (SUCCEEDED(result) && support != nullptr) *support = kSupportsGet;
  return result;
}

GUID CategoryOf(IPin& pin) {
  const auto properties = ComPtr<IPin>::Share(&pin).As<IKsPropertySet>();
  GUID category = GUID_NULL;
  DWORD bytes = 0;
  const bool told = properties && SUCCEEDED(properties->Get(AMPROPSETID_Pin, AMPROPERTY_PIN_CATEGORY, nullptr,
                                                            0, &category, sizeof category, &bytes));
  return told && bytes == sizeof category ? category : GUID_NULL;
}

}  // namespace quorvex
