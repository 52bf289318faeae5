// The DLL: a COM server for the virtual capture cards, and for the platform's class of capture graph
// builders, which registers itself in the platform's place.
#include <windows.h>

#include <uuids.h>

#include <array>
#include <vector>

#include "base/line21_interface.h"
#include "platform/common/com_object.h"
#include "platform/common/com_server.h"
#include "platform/common/instances.h"
#include "platform/tv/avi_mux.h"
#include "platform/tv/caption_mixer.h"
#include "platform/tv/capture_filter.h"
#include "platform/tv/capture_graph_builder.h"
#include "platform/tv/cc_decoder.h"
#include "platform/tv/file_writer.h"
#include "platform/tv/line21_filter.h"
#include "platform/tv/line_input.h"
#include "platform/tv/tee_filter.h"
#include "platform/tv/vbi_surfaces.h"

namespace quorvex {
namespace {

template <std::size_t index>
IUnknown* MakeCard() {
  return static_cast<IBaseFilter*>(new CaptureFilter(kCards[index]));
}

template <typename Filter>
IUnknown* Make() {
  return static_cast<IBaseFilter*>(new Filter);
}

std::span<const ServedClass> Classes() {
  static const std::array classes{
      ServedClass{kCards[0].id, kCards[0].name, MakeCard<0>},
      ServedClass{kCards[1].id, kCards[1].name, MakeCard<1>},
      ServedClass{kCards[2].id, kCards[2].name, MakeCard<2>},
      ServedClass{CLSID_CaptureGraphBuilder, L"Capture Graph Builder",
                  []() -> IUnknown* { return static_cast<ICaptureGraphBuilder*>(new CaptureGraphBuilder); }},
      ServedClass{kLineInputClass, kLineInputName, Make<LineInput>},
      ServedClass{kTeeClass, kTeeName, Make<TeeFilter>},
      ServedClass{kCcDecoderClass, kCcDecoderName, Make<CcDecoder>},
      ServedClass{kCaptionMixerClass, L"Quorvex Caption Mixer", Make<CaptionMixer>},
      ServedClass{kAviMuxClass, L"Quorvex AVI Mux", Make<AviMux>},
      ServedClass{kFileWriterClass, L"Quorvex File Writer", Make<FileWriter>},
      ServedClass{kClsidLine21Decoder, L"Line 21 Decoder", Make<Line21Filter>},
      ServedClass{CLSID_VBISurfaces, L"VBI Surface Allocator", Make<VbiSurfaces>}};
  return classes;
}

// The platform's numbers for these two categories of filters (KSCATEGORY_SPLITTER, KSCATEGORY_VBICODEC).
constexpr GUID kSplitters = {0x0a4252a0, 0x7e70, 0x11d0, {0xa5, 0xd6, 0x28, 0xdb, 0x04, 0xc1, 0x00, 0x00}};
constexpr GUID kVbiCodecs = {0x07dad660, 0x22f1, 0x11d1, {0xa9, 0xf4, 0x00, 0xc0, 0x4f, 0xbb, 0xde, 0x8f}};

std::vector<ClassesValue> AllValues() {
  std::vector<ClassesValue> values = ClassValues(Classes());
  const auto add = [&](const GUID& category, const CLSID& listed, const wchar_t* name) {
    for (ClassesValue& value : InstanceValues(category, listed, name)) values.push_back(std::move(value));
  };
  add(CLSID_ActiveMovieCategories, kSplitters, L"WDM Streaming Tee/Splitter Devices");
  add(CLSID_ActiveMovieCategories, kVbiCodecs, L"WDM Streaming VBI Codecs");
  add(kSplitters, kTeeClass, kTeeName);
  add(kVbiCodecs, kCcDecoderClass, kCcDecoderName);
  return values;
}

constexpr const wchar_t* kServer = L"qvtv";

}  // namespace
}  // namespace quorvex

STDAPI DllGetClassObject(REFCLSID wanted, REFIID iid, void** object) {
  return quorvex::GetClassObject(quorvex::Classes(), wanted, iid, object);
}

STDAPI DllCanUnloadNow() { return quorvex::ModuleUser::Any() ? S_FALSE : S_OK; }

STDAPI DllRegisterServer() { return quorvex::Register(quorvex::kServer, quorvex::AllValues()); }

STDAPI DllUnregisterServer() {
  const quorvex::SharedCard card;
  for (const quorvex::CardTraits& traits : quorvex::kCards) quorvex::PlugOut(*card, traits);
  return quorvex::Unregister(quorvex::kServer, quorvex::AllValues());
}
