#include "devices/tv/capture_devices.h"

#include <windows.h>

#include <oaidl.h>
#include <ocidl.h>
#include <strmif.h>
#include <uuids.h>

#include "base/com_ptr.h"

namespace quorvex {
namespace {

std::string FriendlyName(IMoniker* moniker, std::size_t index) {
  std::string name = "Capture device " + std::to_string(index + 1);
  ComPtr<IPropertyBag> properties;
  VARIANT value;
  ::VariantInit(&value);
  if (FAILED(moniker->BindToStorage(nullptr, nullptr, IID_IPropertyBag, properties.ReceiveVoid())))
    return name;
  if (properties->Read(L"FriendlyName", &value, nullptr) == S_OK && value.vt == VT_BSTR) {
    const int length = static_cast<int>(::SysStringLen(value.bstrVal));
    name.resize(static_cast<std::size_t>(length) * 3);
    const int size = static_cast<int>(name.size());
    name.resize(static_cast<std::size_t>(
        ::WideCharToMultiByte(CP_ACP, 0, value.bstrVal, length, name.data(), size, nullptr, nullptr)));
  }
  ::VariantClear(&value);
  return name;
}

}  // namespace

std::vector<std::string> ListCaptureDevices() {
  std::vector<std::string> names;
  ComPtr<ICreateDevEnum> devices;
  ComPtr<IEnumMoniker> monikers;
  if (FAILED(::CoCreateInstance(CLSID_SystemDeviceEnum, nullptr, CLSCTX_INPROC_SERVER, IID_ICreateDevEnum,
                                devices.ReceiveVoid()))) {
    return names;
  }
  // An empty category answers S_FALSE and no enumerator.
  if (devices->CreateClassEnumerator(CLSID_VideoInputDeviceCategory, monikers.Receive(), 0) != S_OK)
    return names;
  ComPtr<IMoniker> moniker;
  while (monikers->Next(1, moniker.Receive(), nullptr) == S_OK)
    names.push_back(FriendlyName(moniker.Get(), names.size()));
  return names;
}

}  // namespace quorvex
