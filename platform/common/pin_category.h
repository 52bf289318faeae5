// Tells which category a pin is of (IKsPropertySet): by it capture graph builders find pins.
#pragma once

#include <windows.h>

#include <strmif.h>

#include "platform/common/object_part.h"

namespace quorvex {

class PinCategory final : public ObjectPart<IKsPropertySet> {
 public:
  PinCategory(IUnknown& pin, const GUID& itsCategory) : ObjectPart(pin), category(itsCategory) {}

  HRESULT STDMETHODCALLTYPE Set(REFGUID, DWORD, void*, DWORD, void*, DWORD) override;
  HRESULT STDMETHODCALLTYPE Get(REFGUID set, DWORD property, void* instance, DWORD instanceBytes, void* data,
                                DWORD dataBytes, DWORD* returned) override;
  HRESULT STDMETHODCALLTYPE QuerySupported(REFGUID set, DWORD property, DWORD* support) override;

 private:
  const GUID category;
};

// The category that a pin tells; GUID_NULL when it tells none.
GUID CategoryOf(IPin& pin);

}  // namespace quorvex
