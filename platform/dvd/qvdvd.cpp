// The DLL: a COM server for the platform's class of DVD graph builders, which registers itself in the
// platform's place.
#include <windows.h>

#include <uuids.h>

#include <array>

#include "platform/common/com_object.h"
#include "platform/common/com_server.h"
#include "platform/dvd/dvd_graph_builder.h"

namespace quorvex {
namespace {

std::span<const ServedClass> Classes() {
  static const std::array classes{ServedClass{CLSID_DvdGraphBuilder, L"DVD Graph Builder", []() -> IUnknown* {
                                                return static_cast<IDvdGraphBuilder*>(new DvdGraphBuilder);
                                              }}};
  return classes;
}

constexpr const wchar_t* kServer = L"qvdvd";

}  // namespace
}  // namespace quorvex

STDAPI DllGetClassObject(REFCLSID wanted, REFIID iid, void** object) {
  return quorvex::GetClassObject(quorvex::Classes(), wanted, iid, object);
}

STDAPI DllCanUnloadNow() { return quorvex::ModuleUser::Any() ? S_FALSE : S_OK; }

STDAPI DllRegisterServer() {
  return quorvex::Register(quorvex::kServer, quorvex::ClassValues(quorvex::Classes()));
}

STDAPI DllUnregisterServer() {
  return quorvex::Unregister(quorvex::kServer, quorvex::ClassValues(quorvex::Classes()));
}
