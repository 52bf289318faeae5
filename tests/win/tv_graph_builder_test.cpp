// The capture graph builder, the line input and the caption chain, worked as a capture application works
// them.
#include <gtest/gtest.h>
#include <windows.h>

#include <dshow.h>

#include <cmath>
#include <functional>

#include "base/line21_interface.h"
#include "platform/common/caption_strip.h"
#include "tests/support/card_graph.h"
#include "tests/support/pump.h"

namespace quorvex {
namespace {

class TvGraphBuilderTest : public testing::Test {
 protected:
  TvGraphBuilderTest() { ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
  ~TvGraphBuilderTest() override { ::CoUninitialize(); }
};

// A card in a graph that a builder works.
class BuiltGraph : public CardGraph {
 public:
  explicit BuiltGraph(const CardTraits& traits = kCards[0]) : CardGraph(traits) {
    ::CoCreateInstance(CLSID_CaptureGraphBuilder, nullptr, CLSCTX_INPROC_SERVER,
                       __uuidof(ICaptureGraphBuilder), builder.ReceiveVoid());
    EXPECT_EQ(builder->SetFiltergraph(graph.Get()), S_OK);
  }

  [[nodiscard]] HRESULT Preview() const {
    return builder->RenderStream(&PIN_CATEGORY_PREVIEW, card.Get(), nullptr, nullptr);
  }

  [[nodiscard]] HRESULT Find(const GUID* category, const IID& iid) const {
    ComPtr<IUnknown> found;
    return builder->FindInterface(category, card.Get(), iid, found.ReceiveVoid());
  }

  ComPtr<IBaseFilter> Add(const ComPtr<IBaseFilter>& filter) const {
    EXPECT_TRUE(filter);
    if (filter) graph->AddFilter(filter.Get(), nullptr);
    return filter;
  }

  HRESULT ConnectPins(const ComPtr<IPin>& from, const ComPtr<IBaseFilter>& to) const {
    return graph->ConnectDirect(from.Get(), FindPin(*to.Get(), PINDIR_INPUT, nullptr).Get(), nullptr);
  }

  // The chain from the card's VBI pin to its decoded captions.
  void AddCaptions() {
    const auto tee =
        Add(FilterNamed(CategoryNamed(L"WDM Streaming Tee/Splitter Devices"), L"Tee/Sink-to-Sink Converter"));
    const auto codec = Add(FilterNamed(CategoryNamed(L"WDM Streaming VBI Codecs"), L"CC Decoder"));
    decoder = Add(New(kClsidLine21Decoder));
    const auto surfaces = Add(New(CLSID_VBISurfaces));
    ASSERT_TRUE(tee && codec && decoder && surfaces);
    EXPECT_EQ(ConnectPins(Pin(PIN_CATEGORY_VBI), tee), S_OK);
    EXPECT_EQ(ConnectPins(Out(tee), codec), S_OK);
    EXPECT_EQ(ConnectPins(Out(codec), decoder), S_OK);
    EXPECT_EQ(ConnectPins(Pin(PIN_CATEGORY_VIDEOPORT_VBI), surfaces), S_OK);
  }

  static ComPtr<IPin> Out(const ComPtr<IBaseFilter>& filter) {
    return FindPin(*filter.Get(), PINDIR_OUTPUT, nullptr);
  }

  static ComPtr<IBaseFilter> New(const CLSID& id) {
    ComPtr<IBaseFilter> filter;
    ::CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IBaseFilter), filter.ReceiveVoid());
    return filter;
  }

  // The category of this name; GUID_NULL when the platform lists none.
  static GUID CategoryNamed(const std::wstring& name) {
    GUID category = GUID_NULL;
    ComPtr<ICreateDevEnum> devices;
    ComPtr<IEnumMoniker> monikers;
    ::CoCreateInstance(CLSID_SystemDeviceEnum, nullptr, CLSCTX_INPROC_SERVER, IID_ICreateDevEnum,
                       devices.ReceiveVoid());
    devices->CreateClassEnumerator(CLSID_ActiveMovieCategories, monikers.Receive(), 0);
    ComPtr<IMoniker> moniker;
    while (monikers && monikers->Next(1, moniker.Receive(), nullptr) == S_OK) {
      ComPtr<IPropertyBag> properties;
      VARIANT value;
      ::VariantInit(&value);
      moniker->BindToStorage(nullptr, nullptr, IID_IPropertyBag, properties.ReceiveVoid());
      const bool found = properties->Read(L"FriendlyName", &value, nullptr) == S_OK && name == value.bstrVal;
      ::VariantClear(&value);
      if (found && properties->Read(L"CLSID", &value, nullptr) == S_OK)
        ::CLSIDFromString(value.bstrVal, &category);
      ::VariantClear(&value);
    }
    return category;
  }

  ComPtr<ICaptureGraphBuilder> builder;
  ComPtr<IBaseFilter> decoder;
};

// Takes everything off that hangs on a filter's outputs, as an application does that rebuilds its graph.
void RemoveDownstream(IGraphBuilder& graph, IBaseFilter& filter) {
  for (const ComPtr<IPin>& pin : PinsOf(filter)) {
    const ComPtr<IPin> peer = PeerOf(*pin.Get());
    if (!peer || DirectionOf(*peer.Get()) != PINDIR_INPUT) continue;
    const ComPtr<IBaseFilter> next = FilterOf(*peer.Get());
    RemoveDownstream(graph, *next.Get());
    graph.Disconnect(peer.Get());
    graph.Disconnect(pin.Get());
    graph.RemoveFilter(next.Get());
  }
}

struct FoundCase {
  const char* name;
  const GUID* category;
  IID iid;
  bool ofTuner;
  bool ofCamera;
};

TEST_F(TvGraphBuilderTest, FindsInterfacesAtFilterPinsAndDownstream) {
  const PluggedCards cards({CardKind::kTv, CardKind::kCamera});
  const FoundCase cases[] = {
      {"format", &PIN_CATEGORY_CAPTURE, __uuidof(IAMStreamConfig), true, true},
      {"format of a preview", &PIN_CATEGORY_PREVIEW, __uuidof(IAMStreamConfig), false, false},
      {"tuner", nullptr, __uuidof(IAMTVTuner), true, false},
      {"crossbar", nullptr, __uuidof(IAMCrossbar), true, false},
      {"controls", nullptr, __uuidof(IAMVideoProcAmp), true, true},
      {"dialogs", &PIN_CATEGORY_CAPTURE, __uuidof(IAMVfwCaptureDialogs), true, true},
      {"window", &PIN_CATEGORY_PREVIEW, IID_IVideoWindow, true, true},
      {"window behind the free pin", &PIN_CATEGORY_CAPTURE, IID_IVideoWindow, false, false},
      {"window downstream", &LOOK_DOWNSTREAM_ONLY, IID_IVideoWindow, true, true},
      {"window upstream", &LOOK_UPSTREAM_ONLY, IID_IVideoWindow, false, false},
  };
  const BuiltGraph tv(kCards[0]);
  const BuiltGraph camera(kCards[1]);
  ASSERT_EQ(tv.Preview(), S_OK);
  ASSERT_EQ(camera.Preview(), S_OK);
  for (const FoundCase& each : cases) {
    EXPECT_EQ(tv.Find(each.category, each.iid), each.ofTuner ? S_OK : E_FAIL) << each.name;
    EXPECT_EQ(camera.Find(each.category, each.iid), each.ofCamera ? S_OK : E_FAIL) << each.name;
  }
}

TEST_F(TvGraphBuilderTest, KeepsTheGraphItIsGiven) {
  const PluggedCards cards;
  const BuiltGraph built;
  ComPtr<IGraphBuilder> told;
  EXPECT_EQ(built.builder->GetFiltergraph(told.Receive()), S_OK);
  EXPECT_EQ(told.Get(), built.graph.Get());
  EXPECT_EQ(built.builder->SetFiltergraph(built.graph.Get()), E_UNEXPECTED);
}

TEST_F(TvGraphBuilderTest, ACardWithoutAPreviewPinIsSplit) {
  const PluggedCards cards({CardKind::kCapture});
  BuiltGraph built(kCards[2]);
  EXPECT_EQ(built.Preview(), VFW_S_NOPREVIEWPIN);
  EXPECT_EQ(built.Find(&PIN_CATEGORY_CAPTURE, IID_IVideoWindow), S_OK);
  EXPECT_EQ(built.Find(&PIN_CATEGORY_PREVIEW, IID_IVideoWindow), E_FAIL);
  built.Run();
  PumpFor(300);
  built.control->Stop();
  // The tee has a pin left for the file.
  built.pictures = ComPtr<RecordingSink>::Attach(new RecordingSink(MEDIATYPE_Video));
  built.graph->AddFilter(built.pictures.Get(), L"file");
  EXPECT_EQ(
      built.builder->RenderStream(&PIN_CATEGORY_CAPTURE, built.card.Get(), nullptr, built.pictures.Get()),
      S_OK);
  EXPECT_EQ(built.Preview(), E_INVALIDARG);
}

TEST_F(TvGraphBuilderTest, AGraphCanBeTakenDownAndBuiltAgain) {
  const PluggedCards cards;
  BuiltGraph built;
  for (int i = 0; i < 3; ++i) {
    ASSERT_EQ(built.Preview(), S_OK);
    built.AddCaptions();
    ASSERT_EQ(built.graph->Render(BuiltGraph::Out(built.decoder).Get()), S_OK);
    built.Run();
    PumpFor(200);
    built.control->Stop();
    built.decoder.Reset();
    RemoveDownstream(*built.graph.Get(), *built.card.Get());
    EXPECT_EQ(FiltersOf(*built.graph.Get()).size(), 1U);
  }
  built.builder.Reset();
  built.card.Reset();
  EXPECT_EQ(built.Release(), 0U);
}

TEST_F(TvGraphBuilderTest, StreamsAreHeldBackAndLetGo) {
  const PluggedCards cards;
  BuiltGraph built;
  ASSERT_EQ(built.Preview(), S_OK);
  ASSERT_EQ(built.Watch(PIN_CATEGORY_CAPTURE), S_OK);
  REFERENCE_TIME never = MAXLONGLONG;
  EXPECT_EQ(built.builder->ControlStream(&PIN_CATEGORY_VBI, nullptr, nullptr, &never, 0, 0), E_FAIL);
  EXPECT_EQ(built.builder->ControlStream(&PIN_CATEGORY_PREVIEW, nullptr, nullptr, &never, 0, 0), S_OK);
  EXPECT_EQ(built.builder->ControlStream(&PIN_CATEGORY_CAPTURE, nullptr, &never, nullptr, 0, 0), S_OK);
  built.Run();
  PumpFor(500);
  EXPECT_TRUE(built.Seen().empty());
  EXPECT_EQ(built.builder->ControlStream(&PIN_CATEGORY_CAPTURE, nullptr, nullptr, &never, 5, 0), S_OK);
  EXPECT_GE(built.WaitForChannel(4), 0);
  EXPECT_EQ(built.builder->ControlStream(&PIN_CATEGORY_CAPTURE, nullptr, &never, nullptr, 0, 0), S_OK);
  PumpFor(150);
  const std::size_t held = built.Seen().size();
  PumpFor(300);
  EXPECT_EQ(built.Seen().size(), held);
}

// How much of the captions' bottom row is black.
double BlackInBottomRow(const PictureView& view) {
  const Rect first = CaptionCellBox({view.width, view.height}, 14, 0);
  int black = 0;
  int all = 0;
  for (int y = first.top; y < first.bottom; ++y) {
    for (int x = first.left; x < first.left + 8 * first.Width(); ++x, ++all) {
      const std::uint8_t* pixel = view.top + y * view.stride + x * 4;
      black += pixel[0] + pixel[1] + pixel[2] < 3 * 8 ? 1 : 0;
    }
  }
  return static_cast<double>(black) / all;
}

TEST_F(TvGraphBuilderTest, CaptionsAreLaidOverThePreview) {
  const PluggedCards cards;
  BuiltGraph built;
  constexpr CLSID kMixer = {0x5c0a1f30, 0x7e54, 0x4a2b, {0x9f, 0x61, 0x2d, 0x8e, 0x47, 0xb3, 0x10, 0x07}};
  const auto mixer = built.Add(BuiltGraph::New(kMixer));
  std::atomic<double> black{0};
  built.pictures = ComPtr<RecordingSink>::Attach(new RecordingSink(MEDIATYPE_Video));
  built.pictures->atSample = [&](IMediaSample& sample, const MediaType& type) {
    Size size;
    std::vector<std::uint8_t> pixels = Pixels(sample, type, size);
    black = BlackInBottomRow({pixels.data(), size.width * 4L, size.width, size.height});
  };
  built.graph->AddFilter(built.pictures.Get(), L"sink");
  ASSERT_EQ(built.ConnectPins(built.Pin(PIN_CATEGORY_PREVIEW), mixer), S_OK);
  ASSERT_EQ(built.ConnectPins(BuiltGraph::Out(mixer), ComPtr<IBaseFilter>::Share(built.pictures.Get())),
            S_OK);
  built.AddCaptions();
  ASSERT_EQ(built.graph->Render(BuiltGraph::Out(built.decoder).Get()), S_OK);
  ComPtr<IAMLine21Decoder> captions;
  ASSERT_EQ(built.decoder->QueryInterface(kIidLine21Decoder, captions.ReceiveVoid()), S_OK);
  built.Run();
  const auto becomes = [&](double least, double most) {
    return PumpUntil([&] { return black >= least && black <= most; }, 4000);
  };
  PumpFor(1500);
  EXPECT_LT(black, 0.1) << "captions are off at first";
  EXPECT_EQ(captions->SetServiceState(kLine21StateOn), S_OK);
  EXPECT_TRUE(becomes(0.4, 1)) << black;
  EXPECT_EQ(captions->SetDrawBackgroundMode(kLine21BackgroundTransparent), S_OK);
  EXPECT_TRUE(becomes(0.02, 0.4)) << black;
  EXPECT_EQ(captions->SetServiceState(kLine21StateOff), S_OK);
  EXPECT_TRUE(becomes(0, 0.02)) << black;
  captions.Reset();
}

TEST_F(TvGraphBuilderTest, TheLineInputHearsTheChannel) {
  const PluggedCards cards;
  const std::vector<std::wstring> names = NamesIn(CLSID_AudioInputDeviceCategory);
  ASSERT_FALSE(names.empty());
  EXPECT_EQ(names.front(), kLineInputName);
  cards->channel = 5;
  BuiltGraph built;
  const auto line = built.Add(FilterNamed(CLSID_AudioInputDeviceCategory, kLineInputName));
  built.sounds = ComPtr<RecordingSink>::Attach(new RecordingSink(MEDIATYPE_Audio));
  built.graph->AddFilter(built.sounds.Get(), L"sink");
  ASSERT_EQ(built.builder->RenderStream(&PIN_CATEGORY_CAPTURE, line.Get(), nullptr, built.sounds.Get()),
            S_OK);
  built.Run();
  ASSERT_TRUE(PumpUntil([&] {
    const auto segments = built.sounds->Segments();
    return !segments.empty() && segments.back().samples.size() > 25;
  }));
  built.control->Stop();
  std::vector<std::int16_t> heard;
  const auto segments = built.sounds->Segments();
  for (const auto& sample : segments.back().samples)
    heard.insert(heard.end(), sample.sound.begin(), sample.sound.end());
  int rises = 0;
  for (int i = 1; i <= 44100; ++i) {
    const auto at = static_cast<std::size_t>(i);
    rises += heard.at(at - 1) < 0 && heard.at(at) >= 0 ? 1 : 0;
  }
  EXPECT_NEAR(rises, 300, 2);  // 200 Hz and 20 a channel
}

}  // namespace
}  // namespace quorvex
