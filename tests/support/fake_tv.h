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

#include "base/capture_recovery_interface.h"
#include "tests/support/fake_captions.h"
#include "tests/support/fake_card.h"
#include "tests/support/fake_categories.h"
#include "tests/support/fake_filters.h"
#include "tests/support/fake_recorder.h"
#include "tests/support/graph_parts.h"

namespace quorvex {

class FakeCaptureGraph final
    : public ComFake<CardScript, NoGraphBuilder, NoMediaControl, NoBasicAudio, QueuedEvents> {
 public:
  explicit FakeCaptureGraph(CardScript& itsCard)
      : ComFake(itsCard, "graph",
                {{{IID_IGraphBuilder, "IID_IGraphBuilder"},
                  {IID_IMediaControl, "IID_IMediaControl"},
                  {IID_IBasicAudio, "IID_IBasicAudio"},
                  {IID_IMediaEventEx, "IID_IMediaEventEx"}}}) {}

  EventQueue& Queue() override { return script; }
  STDMETHODIMP SetNotifyWindow(OAHWND window, long, LONG_PTR) override {
    EXPECT_TRUE(window == 0 || window == reinterpret_cast<OAHWND>(mainWindow));
    return script.Answer("SetNotifyWindow");
  }

  STDMETHODIMP Run() override { return script.Call("Run"); }
  STDMETHODIMP Pause() override { return script.Call("Pause"); }
  STDMETHODIMP Stop() override { return script.Call("Stop"); }

  STDMETHODIMP AddFilter(IBaseFilter* filter, LPCWSTR name) override {
    EXPECT_EQ(name, nullptr);
    const HRESULT result = script.Call("Add " + NameOf(filter));
    if (SUCCEEDED(result)) Hold(filter);
    return result;
  }
  // What is still connected to it, as other inputs of a multiplexer, is disconnected by the platform.
  STDMETHODIMP RemoveFilter(IBaseFilter* filter) override {
    const HRESULT result = script.Call("Remove " + NameOf(filter));
    if (FAILED(result)) return result;
    for (const auto& pin : static_cast<FakeFilter*>(filter)->pins) pin->Part();
    std::erase_if(filters, [filter](const auto& held) { return held.Get() == filter; });
    return result;
  }
  STDMETHODIMP ConnectDirect(IPin* output, IPin* input, const AM_MEDIA_TYPE* type) override {
    EXPECT_EQ(type, nullptr);
    const HRESULT result = script.Call("Connect " + AsPin(output).Name(), AsPin(input).Name());
    if (SUCCEEDED(result)) AsPin(output).Join(AsPin(input));
    return result;
  }
  STDMETHODIMP Disconnect(IPin* pin) override {
    const HRESULT result = script.Call("Disconnect", AsPin(pin).Name());
    if (SUCCEEDED(result)) AsPin(pin).Part();
    return result;
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

  void Hold(IBaseFilter* filter) { filters.push_back(ComPtr<IBaseFilter>::Share(filter)); }

 private:
  static std::string NameOf(IBaseFilter* filter) { return static_cast<FakeFilter*>(filter)->name; }
  static FakePin& AsPin(IPin* pin) { return *static_cast<FakePin*>(pin); }

  std::vector<ComPtr<IBaseFilter>> filters;
};

class FakeCaptureBuilder final : public ComFake<CardScript, ICaptureGraphBuilder, ICaptureRecovery> {
 public:
  explicit FakeCaptureBuilder(CardScript& itsCard)
      : ComFake(itsCard, "builder",
                {{{IID_ICaptureGraphBuilder, "ICaptureGraphBuilder"},
                  {__uuidof(ICaptureRecovery), "ICaptureRecovery"}}}) {}

  STDMETHODIMP Recover(LPCOLESTR path, LONGLONG* length) override {
    *length = script.recovered;
    const HRESULT result = script.Call("Recover", Narrow(path));
    return result == S_OK && script.recovered == 0 ? S_FALSE : result;
  }

  STDMETHODIMP SetFiltergraph(IGraphBuilder* itsGraph) override {
    graph = ComPtr<FakeCaptureGraph>::Share(static_cast<FakeCaptureGraph*>(itsGraph));
    return script.Call("SetFiltergraph");
  }
  STDMETHODIMP FindInterface(const GUID* category, IBaseFilter* filter, REFIID iid, void** object) override {
    *object = nullptr;
    const std::string owner = static_cast<FakeFilter*>(filter)->name;
    const std::string name = NameOf(iid);
    script.log += "Find " + owner + ' ' + name + ' ' + CategoryName(category) + '\n';
    const HRESULT result = script.Answer("Find " + owner + ' ' + name);
    if (FAILED(result)) return result;
    *object = Make(iid, owner);
    return result;
  }
  // A card without a preview pin shows what its capture pin delivers.
  STDMETHODIMP RenderStream(const GUID* category, IUnknown* source, IBaseFilter* between,
                            IBaseFilter* sink) override {
    EXPECT_EQ(between, nullptr);
    auto& filter = static_cast<FakeFilter&>(*static_cast<IBaseFilter*>(source));
    if (sink != nullptr) return RenderInto(filter, static_cast<FakeFilter&>(*sink), category);
    const HRESULT result = script.Call("RenderStream", CategoryName(category));
    if (SUCCEEDED(result))
      graph->ShowBehind(filter.Pin(result == VFW_S_NOPREVIEWPIN ? "Capture" : "Preview"), "renderer");
    return result;
  }
  STDMETHODIMP SetOutputFileName(const GUID* type, LPCOLESTR path, IBaseFilter** mux,
                                 IFileSinkFilter** writer) override {
    EXPECT_EQ(*type, MEDIASUBTYPE_Avi);
    *mux = nullptr;
    *writer = nullptr;
    const HRESULT result = script.Call("SetOutputFileName", Narrow(path));
    if (FAILED(result)) return result;
    ComPtr<FakeFilter> made = MakeMultiplexer(script);
    graph->Hold(made.Get());
    *mux = made.Detach();
    *writer = new FakeFileWriter(script);
    return result;
  }
  STDMETHODIMP ControlStream(const GUID* category, IBaseFilter* filter, REFERENCE_TIME* start,
                             REFERENCE_TIME* stop, WORD, WORD) override {
    EXPECT_EQ(filter, nullptr);
    return script.Call("Control " + CategoryName(category), TimeName(start) + " to " + TimeName(stop));
  }
  STDMETHODIMP AllocCapFile(LPCOLESTR path, DWORDLONG bytes) override {
    return script.Call("AllocCapFile", Narrow(path) + ' ' + std::to_string(bytes));
  }
  STDMETHODIMP CopyCaptureFile(LPOLESTR from, LPOLESTR to, int escape,
                               IAMCopyCaptureFileProgress* progress) override {
    EXPECT_EQ(progress, nullptr);
    EXPECT_EQ(escape, TRUE);
    return script.Call("CopyCaptureFile", Narrow(from) + " to " + Narrow(to));
  }
  QUORVEX_UNEXPECTED(GetFiltergraph, IGraphBuilder**)

 private:
  static std::string CategoryName(const GUID* category) {
    if (category == nullptr) return "any";
    return *category == PIN_CATEGORY_CAPTURE   ? "capture"
           : *category == PIN_CATEGORY_PREVIEW ? "preview"
                                               : "?";
  }
  HRESULT RenderInto(FakeFilter& filter, FakeFilter& mux, const GUID* category) {
    const HRESULT result =
        script.Call("Render " + std::string(filter.name), CategoryName(category) + " into " + mux.name);
    const auto input =
        std::find_if(mux.pins.begin(), mux.pins.end(), [](const auto& pin) { return pin->peer == nullptr; });
    if (SUCCEEDED(result)) filter.Pin("Capture").Join(**input);
    return result;
  }
  static std::string TimeName(const REFERENCE_TIME* time) {
    if (time == nullptr) return "now";
    return *time == 0x7FFFFFFFFFFFFFFF ? "never" : "?";
  }
  static std::string NameOf(REFIID iid) {
    if (iid == IID_IAMStreamConfig) return "IAMStreamConfig";
    if (iid == IID_IAMVfwCaptureDialogs) return "IAMVfwCaptureDialogs";
    if (iid == IID_IAMTVTuner) return "IAMTVTuner";
    if (iid == IID_IAMCrossbar) return "IAMCrossbar";
    if (iid == IID_IAMVideoProcAmp) return "IAMVideoProcAmp";
    if (iid == IID_IAMDroppedFrames) return "IAMDroppedFrames";
    return iid == IID_IVideoWindow ? "IVideoWindow" : "?";
  }
  void* Make(REFIID iid, const std::string& owner) {
    if (iid == IID_IAMStreamConfig && owner != "card") return new FakeSoundConfig(script);
    if (iid == IID_IAMStreamConfig) return new FakeStreamConfig(script, "video stream");
    if (iid == IID_IAMVfwCaptureDialogs) return new FakeDialogs(script);
    if (iid == IID_IAMTVTuner) return new FakeTuner(script);
    if (iid == IID_IAMCrossbar) return new FakeCrossbar(script);
    if (iid == IID_IAMVideoProcAmp) return new FakePictureControls(script);
    if (iid == IID_IAMDroppedFrames) return new FakeFrameCounts(script);
    EXPECT_EQ(iid, IID_IVideoWindow);
    script.renderer.AddRef();
    return static_cast<IVideoWindow*>(&script.renderer);
  }

  ComPtr<FakeCaptureGraph> graph;
};

class FakeTv final : public CardScript {
 public:
  FakeTv() {
    const auto teeFilters = L"{0A4252A0-7E70-11D0-A5D6-28DB04C10000}";
    const auto codecs = L"{07DAD660-22F1-11D1-A9F4-00C04FBBDE8F}";
    categories = {
        {CLSID_VideoInputDeviceCategory, "video", {{L"A card", nullptr, [this] { return MakeCard(); }}}},
        {CLSID_AudioInputDeviceCategory,
         "audio",
         {{L"A line", nullptr, Filter("line", {{"Capture", PINDIR_OUTPUT}})}}},
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
  HRESULT Create(const char* name, const Made& make, void** object) {
    const HRESULT result = Answer(std::string("Create ") + name);
    if (SUCCEEDED(result)) *object = make();
    return result;
  }
  FakeClass::Creator Creates(const char* name, std::function<IUnknown*()> make) {
    return [this, name, make](REFIID, void** object) { return Create(name, make, object); };
  }
  IUnknown* MakeLineDecoder() {
    auto* const decoder = new FakeFilter(*this, "line21", {{"In", PINDIR_INPUT}, {"Out", PINDIR_OUTPUT}});
    decoder->beside = [this](REFIID iid) {
      return iid == kIidLine21Decoder ? ComPtr<IUnknown>::Attach(new FakeCaptions(*this)) : nullptr;
    };
    return decoder;
  }

  FakeClass lists{CLSID_SystemDeviceEnum,
                  Creates("list", [this] { return new FakeDeviceList(*this, categories); })};
  FakeClass builders{CLSID_CaptureGraphBuilder, Creates("builder", [this] {
                       return static_cast<ICaptureGraphBuilder*>(new FakeCaptureBuilder(*this));
                     })};
  FakeClass graphs{CLSID_FilterGraph, Creates("graph", [this] {
                     return static_cast<IGraphBuilder*>(new FakeCaptureGraph(*this));
                   })};
  FakeClass lineDecoders{kClsidLine21Decoder, Creates("line21", [this] { return MakeLineDecoder(); })};
  FakeClass surfaces{CLSID_VBISurfaces, Creates("surfaces", [this] {
                       return new FakeFilter(*this, "surfaces", {{"In", PINDIR_INPUT}});
                     })};
};

}  // namespace quorvex
