// The DLL: a COM server for the media source, which registers itself as the platform's source of media files.
#include <windows.h>

#include <array>

#include "platform/common/com_object.h"
#include "platform/common/com_server.h"
#include "platform/media/file_types.h"
#include "platform/media/media_source.h"

namespace quorvex {
namespace {

constexpr std::array kClasses{ServedClass{kMediaSourceClass, L"Quorvex media source", []() -> IUnknown* {
                                            return static_cast<IBaseFilter*>(new MediaSource);
                                          }}};

std::vector<ClassesValue> AllValues() {
  std::vector<ClassesValue> values = ClassValues(kClasses);
  for (ClassesValue& value : FileTypeValues(kMediaSourceClass)) values.push_back(std::move(value));
  return values;
}

constexpr const wchar_t* kServer = L"qvmedia";

}  // namespace
}  // namespace quorvex

STDAPI DllGetClassObject(REFCLSID wanted, REFIID iid, void** object) {
  return quorvex::GetClassObject(quorvex::kClasses, wanted, iid, object);
}

STDAPI DllCanUnloadNow() { return quorvex::ModuleUser::Any() ? S_FALSE : S_OK; }

STDAPI DllRegisterServer() { return quorvex::Register(quorvex::kServer, quorvex::AllValues()); }

STDAPI DllUnregisterServer() { return quorvex::Unregister(quorvex::kServer, quorvex::AllValues()); }
