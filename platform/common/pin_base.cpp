#include "platform/common/pin_base.h"

#include <vfwmsgs.h>
#include <windows.h>

#include <algorithm>
#include <utility>

#include "platform/common/enumerators.h"

namespace quorvex {

HRESULT PinBase::QueryInterface(REFIID iid, void** object) {
  return HandOut(static_cast<IPin*>(this), Find(iid), object);
}

PinBase::Connection PinBase::Current() {
  const std::scoped_lock guard(lock);
  return connection;
}

void PinBase::Replace(Connection made) {
  const std::scoped_lock guard(lock);
  std::swap(connection, made);
}

HRESULT PinBase::Disconnect() {
  if (filter.State() != State_Stopped) return VFW_E_NOT_STOPPED;
  Connection ended;
  {
    const std::scoped_lock guard(lock);
    std::swap(ended, connection);
  }
  if (!ended.peer) return S_FALSE;
  OnDisconnected();
  return S_OK;
}

HRESULT PinBase::ConnectedTo(IPin** pin) {
  if (pin == nullptr) return E_POINTER;
  *pin = Current().peer.Detach();
  return *pin != nullptr ? S_OK : VFW_E_NOT_CONNECTED;
}

HRESULT PinBase::ConnectionMediaType(AM_MEDIA_TYPE* type) {
  if (type == nullptr) return E_POINTER;
  const Connection current = Current();
  current.type.CopyTo(*type);
  return current.peer ? S_OK : VFW_E_NOT_CONNECTED;
}

HRESULT PinBase::QueryPinInfo(PIN_INFO* info) {
  if (info == nullptr) return E_POINTER;
  info->pFilter = ComPtr<IBaseFilter>::Share(&filter).Detach();
  info->dir = direction;
  ::lstrcpynW(info->achName, name.c_str(), MAX_PIN_NAME);
  return S_OK;
}

HRESULT PinBase::QueryDirection(PIN_DIRECTION* told) {
  if (told == nullptr) return E_POINTER;
  *told = direction;
  return S_OK;
}

HRESULT PinBase::QueryId(LPWSTR* id) {
  if (id == nullptr) return E_POINTER;
  *id = static_cast<LPWSTR>(::CoTaskMemAlloc((name.size() + 1) * sizeof(wchar_t)));
  if (*id == nullptr) return E_OUTOFMEMORY;
  std::copy_n(name.c_str(), name.size() + 1, *id);
  return S_OK;
}

HRESULT PinBase::EnumMediaTypes(IEnumMediaTypes** types) {
  if (types == nullptr) return E_POINTER;
  *types = new MediaTypeEnumerator(Types());
  return S_OK;
}

HRESULT PinBase::QueryInternalConnections(IPin**, ULONG*) { return E_NOTIMPL; }

bool PinBase::IsConnected() { return static_cast<bool>(Current().peer); }

MediaType PinBase::AgreedType() { return Current().type; }

}  // namespace quorvex
