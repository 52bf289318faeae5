#include "devices/tv/device_category.h"

#include <oaidl.h>
#include <ocidl.h>
#include <uuids.h>

#include "panel/main_window.h"

namespace quorvex {
namespace {

std::string Narrow(BSTR wide) {
  const int length = static_cast<int>(::SysStringLen(wide));
  std::string text(static_cast<std::size_t>(length) * 3, '\0');
  const int size = ::WideCharToMultiByte(CP_ACP, 0, wide, length, text.data(), static_cast<int>(text.size()),
                                         nullptr, nullptr);
  text.resize(static_cast<std::size_t>(size));
  return text;
}

CLSID ClassOf(IMoniker& entry) {
  const std::string text = EntryText(entry, L"CLSID");
  CLSID id{};
  ::CLSIDFromString(std::wstring(text.begin(), text.end()).c_str(), &id);
  return id;
}

HRESULT Bind(IMoniker& entry, ComPtr<IBaseFilter>& filter) {
  return entry.BindToObject(nullptr, nullptr, IID_IBaseFilter, filter.ReceiveVoid());
}

}  // namespace

HRESULT CreateDeviceEnumerator(ComPtr<ICreateDevEnum>& devices) {
  return ::CoCreateInstance(CLSID_SystemDeviceEnum, nullptr, CLSCTX_INPROC_SERVER, IID_ICreateDevEnum,
                            devices.ReceiveVoid());
}

HRESULT VisitCategory(ICreateDevEnum& devices, REFCLSID category,
                      const std::function<bool(IMoniker&)>& visit) {
  ComPtr<IEnumMoniker> entries;
  const HRESULT result = devices.CreateClassEnumerator(category, entries.Receive(), 0);
  if (result != S_OK) return result;
  entries->Reset();
  ComPtr<IMoniker> entry;
  while (entries->Next(1, entry.Receive(), nullptr) == S_OK && visit(*entry.Get())) {
  }
  return result;
}

std::string EntryText(IMoniker& entry, const wchar_t* property) {
  ComPtr<IPropertyBag> properties;
  if (FAILED(entry.BindToStorage(nullptr, nullptr, IID_IPropertyBag, properties.ReceiveVoid()))) return {};
  VARIANT value;
  ::VariantInit(&value);
  std::string text;
  if (properties->Read(property, &value, nullptr) == S_OK && value.vt == VT_BSTR)
    text = Narrow(value.bstrVal);
  ::VariantClear(&value);
  return text;
}

HRESULT BindFilterAt(ICreateDevEnum& devices, REFCLSID category, int place, ComPtr<IBaseFilter>& filter) {
  int passed = 0;
  return VisitCategory(devices, category, [&](IMoniker& entry) {
    if (passed++ != place) return true;
    Bind(entry, filter);
    return false;
  });
}

CLSID FindFilterByName(REFCLSID category, const std::string& friendlyName, ComPtr<IBaseFilter>* bind) {
  CLSID found{};
  ComPtr<ICreateDevEnum> devices;
  if (FAILED(CreateDeviceEnumerator(devices))) return CLSID_ActiveMovieCategories;
  const HRESULT listed = VisitCategory(*devices.Get(), category, [&](IMoniker& entry) {
    if (EntryText(entry, L"FriendlyName") != friendlyName) return true;
    found = ClassOf(entry);
    if (bind != nullptr && FAILED(Bind(entry, *bind))) ReportError("Cannot bind to object");
    return true;
  });
  return listed == S_OK ? found : CLSID_ActiveMovieCategories;
}

}  // namespace quorvex
