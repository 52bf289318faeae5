// A capture card that does as its test says, with the platform's parts around it: the list of devices, the
// capture graph builder, the graph and the filters of the captions, all found by CoCreateInstance while this
// lives.
#pragma once

#include <windows.h>

#include <strmif.h>
#include <uuids.h>
#include <vfwmsgs.h>

#include <string>
#include <vector>

#include "tests/support/fake_card.h"
#include "tests/support/fake_categories.h"
#include "tests/support/fake_filters.h"
#include "tests/support/graph_parts.h"

namespace quorvex {

class FakeCaptureGraph final : public ComFake<NoGraphBuilder, NoMediaControl, NoBasicAudio> {
 public:
  explicit FakeCaptureGraph(CardScript& itsCard)
      : ComFake(itsCard, "graph",
                {{{IID_IGraphBuilder, "IID_IGraphBuilder"},
                  {IID_IMediaControl, "IID_IMediaControl"},
                  {IID_IBasicAudio, "IID_IBasicAudio"}}}) {}

  STDMETHODIMP Run() override { return script.Call("Run"); }
  STDMETHODIMP Stop() override { return script.Call("Stop"); }

  STDMETHODIMP AddFilter(IBaseFilter* filter, LPCWSTR name) override {
    EXPECT_EQ(name, nullptr);
    const HRESULT result = script.Call("Add " + NameOf(filter));
    if (SUCCEEDED(result)) Hold(filter);
    return result;
  }
  STDMETHODIMP RemoveFilter(IBaseFilter* filter) override {
    script.Call("Remove " + NameOf(filter));
    for (const auto& pin : static_cast<FakeFilter*>(filter)->pins)
      EXPECT_EQ(pin->peer, nullptr) << pin->Name() << " is still connected";
    std::erase_if(filters, [filter](const auto& held) { return held.Get() == filter; });
    return S_OK;
  }
  STDMETHODIMP ConnectDirect(IPin* output, IPin* input, const AM_MEDIA_TYPE* type) override {
    EXPECT_EQ(type, nullptr);
    const HRESULT result = script.Call("Connect " + AsPin(output).Name(), AsPin(input).Name());
    if (SUCCEEDED(result)) AsPin(output).Join(AsPin(input));
    return result;
  }
  STDMETHODIMP Disconnect(IPin* pin) override {
    script.Call("Disconnect", AsPin(pin).Name());
    AsPin(pin).Part();
    return S_OK;
  }
  STDMETHODIMP Render(IPin* pin) override {
    const HRESULT result = script.Call("Render " + AsPin(pin).Name());
    if (SUCCEEDED(result)) ShowBehind(AsPin(pin), "overlay");
    return result;
  }

  // Connects a renderer of that name behind a pin.
  void ShowBehind(FakePin& pin, const char* name) {
    const auto shown = ComPtr<FakeFilter>::Attach(new FakeFilter(script, name, {{"In", PINDIR_INPUT}}));
    pin.Join(shown->Pin("In"));
    Hold(shown.Get());
  }

 private:
  static std::string NameOf(IBaseFilter* filter) { return static_cast<FakeFilter*>(filter)->name; }
  static FakePin& AsPin(IPin* pin) { return *static_cast<FakePin*>(pin); }
  void Hold(IBaseFilter* filter) { filters.push_back(ComPtr<IBaseFilter>::Share(filter)); }

  std::vector<ComPtr<IBaseFilter>> filters;
};

class FakeCaptureBuilder final : public ComFake<ICaptureGraphBuilder> {
 public:
  explicit FakeCaptureBuilder(CardScript& itsCard)
      : ComFake(itsCard, "builder", {{{IID_ICaptureGraphBuilder, "ICaptureGraphBuilder"}}}), card(itsCard) {}

  STDMETHODIMP SetFiltergraph(IGraphBuilder* itsGraph) override {
    graph = ComPtr<FakeCaptureGraph>::Share(static_cast<FakeCaptureGraph*>(itsGraph));
    return card.Call("SetFiltergraph");
  }
  STDMETHODIMP FindInterface(const GUID* category, IBaseFilter* filter, REFIID iid, void** object) override {
    *object = nullptr;
    const std::string owner = static_cast<FakeFilter*>(filter)->name;
    const std::string name = NameOf(iid);
    card.log += "Find " + owner + ' ' + name + ' ' + CategoryName(category) + '\n';
    const HRESULT result = card.Answer("Find " + owner + ' ' + name);
    if (FAILED(result)) return result;
    *object = Make(iid, owner);
    return result;
  }
  // A card without a preview pin shows what its capture pin delivers.
  STDMETHODIMP RenderStream(const GUID* category, IUnknown* source, IBaseFilter* between,
                            IBaseFilter* sink) override {
    EXPECT_EQ(between, nullptr);
    EXPECT_EQ(sink, nullptr);
    const HRESULT result = card.Call("RenderStream", CategoryName(category));
    auto& filter = static_cast<FakeFilter&>(*static_cast<IBaseFilter*>(source));
    if (SUCCEEDED(result))
      graph->ShowBehind(filter.Pin(result == VFW_S_NOPREVIEWPIN ? "Capture" : "Preview"), "renderer");
    return result;
  }
  QUORVEX_UNEXPECTED(GetFiltergraph, IGraphBuilder**)
  QUORVEX_UNEXPECTED(SetOutputFileName, const GUID*, LPCOLESTR, IBaseFilter**, IFileSinkFilter**)
  QUORVEX_UNEXPECTED(ControlStream, const GUID*, IBaseFilter*, REFERENCE_TIME*, REFERENCE_TIME*, WORD, WORD)
  QUORVEX_UNEXPECTED(AllocCapFile, LPCOLESTR, DWORDLONG)
  QUORVEX_UNEXPECTED(CopyCaptureFile, LPOLESTR, LPOLESTR, int, IAMCopyCaptureFileProgress*)

 private:
  static std::string CategoryName(const GUID* category) {
    if (category == nullptr) return "any";
    return *category == PIN_CATEGORY_CAPTURE   ? "capture"
           : *category == PIN_CATEGORY_PREVIEW ? "preview"
                                               : "?";
  }
  static std::string NameOf(REFIID iid) {
    if (iid == IID_IAMStreamConfig) return "IAMStreamConfig";
    if (iid == IID_IAMVfwCaptureDialogs) return "IAMVfwCaptureDialogs";
    if (iid == IID_IAMTVTuner) return "IAMTVTuner";
    if (iid == IID_IAMCrossbar) return "IAMCrossbar";
    if (iid == IID_IAMVideoProcAmp) return "IAMVideoProcAmp";
    return iid == IID_IVideoWindow ? "IVideoWindow" : "?";
  }
  void* Make(REFIID iid, const std::string& owner) {
    if (iid == IID_IAMStreamConfig)
      return new FakeStreamConfig(card, owner == "card" ? "video stream" : "audio stream");
    if (iid == IID_IAMVfwCaptureDialogs) return new FakeDialogs(card);
    if (iid == IID_IAMTVTuner) return new FakeTuner(card);
    if (iid == IID_IAMCrossbar) return new FakeCrossbar(card);
    if (iid == IID_IAMVideoProcAmp) return new FakePictureControls(card);
    EXPECT_EQ(iid, IID_IVideoWindow);
    card.renderer.AddRef();
    return static_cast<IVideoWindow*>(&card.renderer);
  }

  CardScript& card;
  ComPtr<FakeCaptureGraph> graph;
};

class FakeTv final : public CardScript {
 public:
  FakeTv() {
    const auto teeFilters = L"{0A4252A0-7E70-11D0-A5D6-28DB04C10000}";
    const auto codecs = L"{07DAD660-22F1-11D1-A9F4-00C04FBBDE8F}";
    categories = {
        {CLSID_VideoInputDeviceCategory, "video", {{L"A card", nullptr, [this] { return MakeCard(); }}}},
        {CLSID_AudioInputDeviceCategory, "audio", {{L"A line", nullptr, Filter("line", {})}}},
        {CLSID_ActiveMovieCategories,
         "categories",
         {{L"WDM Streaming Tee/Splitter Devices", teeFilters, nullptr},
          {L"WDM Streaming VBI Codecs", codecs, nullptr}}},
        {ClassOf(teeFilters),
         "tees",
         {{L"Tee/Sink-to-Sink Converter", nullptr,
           Filter("tee", {{"In", PINDIR_INPUT}, {"First", PINDIR_OUTPUT}, {"Last", PINDIR_OUTPUT}})}}},
        {ClassOf(codecs),
         "codecs",
         {{L"CC Decoder", nullptr, Filter("codec", {{"In", PINDIR_INPUT}, {"Out", PINDIR_OUTPUT}})}}},
    };
  }
  FakeTv(const FakeTv&) = delete;
  FakeTv& operator=(const FakeTv&) = delete;
  ~FakeTv() {
    EXPECT_EQ(alive, 0) << "somebody still holds a part of the card";
    EXPECT_EQ(renderer.references, 1U);
  }

  std::vector<FakeCategory> categories;
  FakeCategory& VideoDevices() { return categories[0]; }
  FakeCategory& AudioDevices() { return categories[1]; }

  // What makes a filter with these pins.
  std::function<ComPtr<IBaseFilter>()> Filter(const char* name, const std::vector<FakePinFacts>& pins) {
    return [this, name, pins] { return ComPtr<IBaseFilter>::Attach(new FakeFilter(*this, name, pins)); };
  }

 private:
  static CLSID ClassOf(const wchar_t* text) {
    CLSID id{};
    ::CLSIDFromString(text, &id);
    return id;
  }
  ComPtr<IBaseFilter> MakeCard() {
    return Filter("card", {{"Capture", PINDIR_OUTPUT},
                           {"Preview", PINDIR_OUTPUT},
                           {"VBI", PINDIR_OUTPUT},
                           {"VPVBI", PINDIR_OUTPUT},
                           {"Tuner", PINDIR_INPUT}})();
  }
  template <typename Made>
  HRESULT Create(const char* name, const Made& make, REFIID iid, void** object) {
    if (const HRESULT result = Answer(std::string("Create ") + name); FAILED(result)) return result;
    const auto made = ComPtr<IUnknown>::Attach(make());
    return made->QueryInterface(iid, object);
  }
  FakeClass::Creator Creates(const char* name, std::function<IUnknown*()> make) {
    return [this, name, make](REFIID iid, void** object) { return Create(name, make, iid, object); };
  }
  IUnknown* MakeLineDecoder() {
    auto* const decoder = new FakeFilter(*this, "line21", {{"In", PINDIR_INPUT}, {"Out", PINDIR_OUTPUT}});
    decoder->decodesCaptions = Answer("IID_IAMLine21Decoder") == S_OK;
    return decoder;
  }

  FakeClass lists{CLSID_SystemDeviceEnum,
                  Creates("list", [this] { return new FakeDeviceList(*this, categories); })};
  FakeClass builders{CLSID_CaptureGraphBuilder,
                     Creates("builder", [this] { return new FakeCaptureBuilder(*this); })};
  FakeClass graphs{CLSID_FilterGraph, Creates("graph", [this] {
                     return static_cast<IGraphBuilder*>(new FakeCaptureGraph(*this));
                   })};
  FakeClass lineDecoders{kClsidLine21Decoder, Creates("line21", [this] { return MakeLineDecoder(); })};
  FakeClass surfaces{CLSID_VBISurfaces, Creates("surfaces", [this] {
                       return new FakeFilter(*this, "surfaces", {{"In", PINDIR_INPUT}});
                     })};
};

}  // namespace quorvex
