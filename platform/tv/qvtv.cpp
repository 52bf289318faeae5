// The DLL: a COM server for the virtual capture cards, and for the platform's class of capture graph builders,
// which registers itself in the platform's place.
#include <windows.h>

#include <uuids.h>

#include <array>

#include "platform/common/com_object.h"
#include "platform/common/com_server.h"
#include "platform/tv/capture_filter.h"
#include "platform/tv/capture_graph_builder.h"

namespace quorvex {
namespace {

template <std::size_t index>
IUnknown* MakeCard() {
  return static_cast<IBaseFilter*>(new CaptureFilter(kCards[index]));
}

std::span<const ServedClass> Classes() {
  static const std::array classes{
      ServedClass{kCards[0].id, kCards[0].name, MakeCard<0>},
      ServedClass{kCards[1].id, kCards[1].name, MakeCard<1>},
      ServedClass{kCards[2].id, kCards[2].name, MakeCard<2>},
      ServedClass{CLSID_CaptureGraphBuilder, L"Capture Graph Builder",
                  []() -> IUnknown* { return static_cast<ICaptureGraphBuilder*>(new CaptureGraphBuilder); }}};
  return classes;
}

constexpr const wchar_t* kServer = L"qvtv";

}  // namespace
}  // namespace quorvex

STDAPI DllGetClassObject(REFCLSID wanted, REFIID iid, void** object) {
  return quorvex::GetClassObject(quorvex::Classes(), wanted, iid, object);
}

STDAPI DllCanUnloadNow() { return quorvex::ModuleUser::Any() ? S_FALSE : S_OK; }

STDAPI DllRegisterServer() { return quorvex::Register(quorvex::kServer, quorvex::ClassValues(quorvex::Classes())); }

STDAPI DllUnregisterServer() {
  const quorvex::SharedCard card;
  for (const quorvex::CardTraits& traits : quorvex::kCards) quorvex::PlugOut(*card, traits);
  return quorvex::Unregister(quorvex::kServer, quorvex::ClassValues(quorvex::Classes()));
}
