// The DLL: a COM server for the sound renderer, which registers itself among the platform's audio renderers,
// before the platform's own.
#include <windows.h>

#include <olectl.h>
#include <strmif.h>
#include <uuids.h>

#include <array>

#include "base/com_ptr.h"
#include "platform/common/com_server.h"
#include "platform/sound/sound_renderer.h"

namespace quorvex {
namespace {

constexpr const wchar_t* kServer = L"qvsound";
constexpr const wchar_t* kName = L"Quorvex sound renderer";
constexpr DWORD kMerit = MERIT_PREFERRED + 1;  // the platform's own has MERIT_PREFERRED

constexpr std::array kClasses{ServedClass{
    kSoundRendererClass, kName, []() -> IUnknown* { return static_cast<IBaseFilter*>(new SoundRenderer); }}};

ComPtr<IFilterMapper2> Mapper() {
  ComPtr<IFilterMapper2> mapper;
  ::CoCreateInstance(CLSID_FilterMapper2, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IFilterMapper2),
                     mapper.ReceiveVoid());
  return mapper;
}

HRESULT EnterAmongRenderers() {
  const ComPtr<IFilterMapper2> mapper = Mapper();
  if (!mapper) return SELFREG_E_CLASS;
  const REGPINTYPES type{&MEDIATYPE_Audio, &MEDIASUBTYPE_PCM};
  REGFILTERPINS2 pin{};
  pin.dwFlags = REG_PINFLAG_B_RENDERER;
  pin.nMediaTypes = 1;
  pin.lpMediaType = &type;
  REGFILTER2 filter{};
  filter.dwVersion = 2;
  filter.dwMerit = kMerit;
  filter.cPins2 = 1;
  filter.rgPins2 = &pin;
  return mapper->RegisterFilter(kSoundRendererClass, kName, nullptr, &CLSID_AudioRendererCategory, kName,
                                &filter);
}

void LeaveRenderers() {
  if (const ComPtr<IFilterMapper2> mapper = Mapper())
    mapper->UnregisterFilter(&CLSID_AudioRendererCategory, kName, kSoundRendererClass);
}

}  // namespace
}  // namespace quorvex

STDAPI DllGetClassObject(REFCLSID wanted, REFIID iid, void** object) {
  return quorvex::GetClassObject(quorvex::kClasses, wanted, iid, object);
}

// It stays: Wine would unload it after every graph, and loses 67 KB each time that a module is loaded again.
STDAPI DllCanUnloadNow() { return S_FALSE; }

STDAPI DllRegisterServer() {
  const HRESULT result = quorvex::Register(quorvex::kServer, quorvex::ClassValues(quorvex::kClasses));
  return SUCCEEDED(result) ? quorvex::EnterAmongRenderers() : result;
}

STDAPI DllUnregisterServer() {
  quorvex::LeaveRenderers();
  return quorvex::Unregister(quorvex::kServer, quorvex::ClassValues(quorvex::kClasses));
}
