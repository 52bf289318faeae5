// The virtual capture cards as any program meets them: the platform's device enumerator, a bare filter graph.
#include <gtest/gtest.h>
#include <windows.h>

#include <dshow.h>
#include <evcode.h>

#include <algorithm>
#include <thread>

#include "platform/tv/capture_type.h"
#include "platform/tv/color_adjustment.h"
#include "platform/tv/reception.h"
#include "tests/support/card_graph.h"
#include "tests/support/pump.h"

namespace quorvex {
namespace {

constexpr ULONGLONG kStopLimitMs = 200;
const CardTraits& kTv = kCards[0];
const CardTraits& kCamera = kCards[1];

class TvCardTest : public testing::Test {
 protected:
  TvCardTest() { ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
  ~TvCardTest() override { ::CoUninitialize(); }
};

bool IsListed(const CardTraits& card) {
  const std::vector<std::wstring> names = NamesIn(CLSID_VideoInputDeviceCategory);
  return std::find(names.begin(), names.end(), card.name) != names.end();
}

ULONGLONG StopTime(const CardGraph& graph) {
  const ULONGLONG begin = ::GetTickCount64();
  graph.control->Stop();
  return ::GetTickCount64() - begin;
}

TEST_F(TvCardTest, IsListedWhileItIsPluggedIn) {
  {
    const PluggedCards cards({CardKind::kTv, CardKind::kCamera});
    EXPECT_TRUE(IsListed(kTv));
    EXPECT_TRUE(IsListed(kCamera));
    cards.PullOut(kTv);
    EXPECT_FALSE(IsListed(kTv));
    EXPECT_TRUE(IsListed(kCamera));
  }
  EXPECT_FALSE(IsListed(kCamera));
}

TEST_F(TvCardTest, ThePreviewPinRendersInAPlainGraph) {
  const PluggedCards cards;
  CardGraph graph;
  ASSERT_TRUE(graph.card);
  ASSERT_GE(graph.graph->Render(graph.Pin(PIN_CATEGORY_PREVIEW).Get()), 0);
  ComPtr<IBasicVideo> video;
  graph.graph->QueryInterface(IID_IBasicVideo, video.ReceiveVoid());
  long width = 0;
  long height = 0;
  ASSERT_EQ(video->GetVideoSize(&width, &height), S_OK);
  EXPECT_EQ(width, 640);
  EXPECT_EQ(height, 480);
  graph.Run();
  PumpFor(500);
  EXPECT_LT(StopTime(graph), kStopLimitMs);
  video.Reset();
  graph.card.Reset();
  EXPECT_EQ(graph.Release(), 0U);
}

TEST_F(TvCardTest, TheTunerChangesWhatIsSeen) {
  const PluggedCards cards;
  CardGraph graph;
  ASSERT_EQ(graph.Watch(PIN_CATEGORY_PREVIEW), S_OK);
  const auto tuner = graph.card.As<IAMTVTuner>();
  ASSERT_TRUE(tuner);
  graph.Run();
  ASSERT_GE(graph.WaitForChannel(4), 0);
  for (const int channel : {5, 11, 69, 4}) {
    EXPECT_EQ(tuner->put_Channel(channel, AMTUNER_SUBCHAN_DEFAULT, AMTUNER_SUBCHAN_DEFAULT), S_OK);
    const int took = graph.WaitForChannel(channel);
    EXPECT_GE(took, 0) << channel;
    EXPECT_LT(took, 100) << channel;
  }
  EXPECT_EQ(tuner->put_Channel(70, -1, -1), E_INVALIDARG);
  EXPECT_EQ(tuner->put_Channel(1, -1, -1), E_INVALIDARG);
  for (const SeenPicture& one : graph.Seen()) {
    const bool station = one.marks->film != 69;  // where there is only noise
    EXPECT_EQ(one.marks->chapter, station ? kTunerInput : 255);
  }
}

TEST_F(TvCardTest, AutoTuneFindsWhatIsOnTheAir) {
  const PluggedCards cards;
  const CardGraph graph;
  const auto tuner = graph.card.As<IAMTVTuner>();
  const std::vector<Station> stations = ReadStations(kFirstStations);
  const ULONGLONG begin = ::GetTickCount64();
  for (const TunerInputType type : {TunerInputAntenna, TunerInputCable}) {
    ASSERT_EQ(tuner->put_InputType(0, type), S_OK);
    LONG lowest = 0;
    LONG highest = 0;
    ASSERT_EQ(tuner->ChannelMinMax(&lowest, &highest), S_OK);
    EXPECT_EQ(lowest, type == TunerInputCable ? 1 : 2);
    EXPECT_EQ(highest, type == TunerInputCable ? 125 : 69);
    for (LONG channel = lowest; channel <= highest; ++channel) {
      LONG signal = -1;
      EXPECT_EQ(tuner->AutoTune(channel, &signal), S_OK);
      const bool station =
          FindStation(stations, static_cast<TunerInput>(type), static_cast<int>(channel)) != nullptr;
      EXPECT_EQ(signal != AMTUNER_NOSIGNAL, station) << channel;
    }
  }
  EXPECT_EQ(tuner->StoreAutoTune(), S_OK);
  EXPECT_LT(::GetTickCount64() - begin, 15000U);
}

TEST_F(TvCardTest, TheCrossbarRoutesAnInputToThePicture) {
  const PluggedCards cards;
  CardGraph graph;
  const auto crossbar = graph.card.As<IAMCrossbar>();
  ASSERT_TRUE(crossbar);
  ASSERT_EQ(graph.Watch(PIN_CATEGORY_PREVIEW), S_OK);
  graph.Run();
  ASSERT_GE(graph.WaitForChannel(4), 0);
  struct Case {
    LONG pin;
    int input;
  };
  for (const auto& [pin, input] : {Case{0, 1}, Case{2, 2}, Case{1, 0}}) {
    EXPECT_EQ(crossbar->Route(0, pin), S_OK);
    LONG routed = -1;
    EXPECT_EQ(crossbar->get_IsRoutedTo(0, &routed), S_OK);
    EXPECT_EQ(routed, pin);
    const int took =
        graph.WaitFor([=](const SeenPicture& one) { return one.marks && one.marks->chapter == input; });
    EXPECT_GE(took, 0) << pin;
    EXPECT_LT(took, 100) << pin;
  }
  EXPECT_EQ(crossbar->CanRoute(0, 4), S_FALSE);
  EXPECT_EQ(crossbar->Route(0, 6), E_INVALIDARG);
  cards->refuseRoute = 1;
  EXPECT_EQ(crossbar->Route(0, 0), E_FAIL);
}

// How each control moves the mean of a colour channel.
TEST_F(TvCardTest, ThePictureControlsCanBeSeen) {
  const PluggedCards cards;
  CardGraph graph;
  const auto controls = graph.card.As<IAMVideoProcAmp>();
  ASSERT_TRUE(controls);
  ASSERT_EQ(graph.Watch(PIN_CATEGORY_PREVIEW), S_OK);
  graph.Run();
  ASSERT_GE(graph.WaitForChannel(4), 0);
  const SeenPicture usual = graph.Seen().back();
  const auto with = [&](LONG property, LONG value) {
    EXPECT_EQ(controls->Set(property, value, VideoProcAmp_Flags_Manual), S_OK);
    ::Sleep(150);
    const SeenPicture seen = graph.Seen().back();
    EXPECT_EQ(controls->Set(property, ColorAdjustment::kMiddle, VideoProcAmp_Flags_Manual), S_OK);
    return seen;
  };
  EXPECT_GT(with(VideoProcAmp_Brightness, 200).green, usual.green + 40);
  EXPECT_LT(with(VideoProcAmp_Brightness, 60).red, usual.red - 40);
  EXPECT_GT(with(VideoProcAmp_Contrast, 0).blue, usual.blue + 10);  // all grey
  EXPECT_GT(std::abs(with(VideoProcAmp_Hue, 180).red - usual.red), 5);
  const SeenPicture grey = with(VideoProcAmp_Saturation, 0);
  EXPECT_NEAR(grey.red, grey.blue, 1);
  EXPECT_EQ(controls->Set(VideoProcAmp_Brightness, 256, VideoProcAmp_Flags_Manual), E_INVALIDARG);
  LONG value = 0;
  LONG flags = 0;
  EXPECT_EQ(controls->Get(VideoProcAmp_Brightness, &value, &flags), S_OK);
  EXPECT_EQ(value, ColorAdjustment::kMiddle);
}

TEST_F(TvCardTest, EveryFormatComesAsItIsAskedFor) {
  const PluggedCards cards;
  const CardGraph asked;
  const auto list = asked.Pin(PIN_CATEGORY_CAPTURE).As<IAMStreamConfig>();
  int count = 0;
  int bytes = 0;
  ASSERT_EQ(list->GetNumberOfCapabilities(&count, &bytes), S_OK);
  ASSERT_EQ(count, 14);
  for (int i = 0; i < count; ++i) {
    VIDEO_STREAM_CONFIG_CAPS capabilities{};
    AM_MEDIA_TYPE* type = nullptr;
    ASSERT_EQ(list->GetStreamCaps(i, &type, reinterpret_cast<BYTE*>(&capabilities)), S_OK);
    CardGraph graph;
    ASSERT_EQ(graph.Pin(PIN_CATEGORY_CAPTURE).As<IAMStreamConfig>()->SetFormat(type), S_OK);
    ASSERT_EQ(graph.Watch(PIN_CATEGORY_CAPTURE), S_OK);
    graph.Run();
    EXPECT_GE(graph.WaitForChannel(4), 0) << i;
    graph.control->Stop();
    EXPECT_EQ(graph.size.width, capabilities.MaxOutputSize.cx);
    EXPECT_EQ(graph.size.height, capabilities.MaxOutputSize.cy);
    FreeMediaType(*type);
    ::CoTaskMemFree(type);
  }
}

TEST_F(TvCardTest, RefusesWhatItCannotDo) {
  const PluggedCards cards;
  CardGraph graph;
  const auto config = graph.Pin(PIN_CATEGORY_CAPTURE).As<IAMStreamConfig>();
  const auto set = [&](const CaptureFormat& format) {
    MediaType type = TypeOf(format);
    return config->SetFormat(const_cast<AM_MEDIA_TYPE*>(&type.Get()));
  };
  EXPECT_EQ(set({.size = {1024, 768}}), VFW_E_INVALIDMEDIATYPE);
  EXPECT_EQ(set({.frameTime = kShortestFrame - 1}), VFW_E_INVALIDMEDIATYPE);
  EXPECT_EQ(set({.frameTime = kLongestFrame + 1}), VFW_E_INVALIDMEDIATYPE);
  EXPECT_EQ(config->SetFormat(nullptr), E_POINTER);
  ASSERT_EQ(graph.Watch(PIN_CATEGORY_CAPTURE), S_OK);
  EXPECT_EQ(set({.size = {320, 240}}), VFW_E_ALREADY_CONNECTED);
  EXPECT_EQ(set({.frameTime = kSecond / 10}), S_OK);
  cards->refuseFormat = 1;
  EXPECT_EQ(set({.frameTime = kSecond / 10}), E_FAIL);
  cards->formatFault = 1;
  AM_MEDIA_TYPE* type = nullptr;
  EXPECT_EQ(config->GetFormat(&type), E_FAIL);
}

struct Rate {
  MediaTime frameTime;
  int perSecond;
};
TEST_F(TvCardTest, PicturesComeAtTheirRateAndTellTheirTimes) {
  const PluggedCards cards;
  for (const auto& [frameTime, perSecond] :
       {Rate{kSecond / 60, 60}, Rate{kSecond * 1001 / 30000, 30}, Rate{kSecond / 5, 5}}) {
    CardGraph graph;
    const auto pin = graph.Pin(PIN_CATEGORY_CAPTURE);
    MediaType type = TypeOf({.size = {320, 240}, .frameTime = frameTime});
    ASSERT_EQ(pin.As<IAMStreamConfig>()->SetFormat(const_cast<AM_MEDIA_TYPE*>(&type.Get())), S_OK);
    ASSERT_EQ(graph.Watch(PIN_CATEGORY_CAPTURE), S_OK);
    graph.Run();
    ASSERT_GE(graph.WaitForChannel(4), 0);
    ::Sleep(2000);
    EXPECT_LT(StopTime(graph), kStopLimitMs);
    const std::vector<SeenPicture> seen = graph.Seen();
    ASSERT_GT(seen.size(), 2U);
    EXPECT_NEAR(static_cast<double>(seen.size()), 2.0 * perSecond, 2 + perSecond * 0.1) << perSecond;
    for (std::size_t i = 1; i < seen.size(); ++i) {
      const int step = seen[i].marks->picture - seen[i - 1].marks->picture;
      EXPECT_EQ(seen[i].begin - seen[i - 1].begin, step * frameTime);
      EXPECT_EQ(seen[i].end - seen[i].begin, frameTime);
    }
  }
}

TEST_F(TvCardTest, LostPicturesAreCountedForEachPin) {
  const PluggedCards cards;
  cards->slowFrames = 100;
  for (const GUID& category : {PIN_CATEGORY_CAPTURE, PIN_CATEGORY_PREVIEW}) {
    CardGraph graph;
    ASSERT_EQ(graph.Watch(category), S_OK);
    graph.Run();
    ::Sleep(2000);
    EXPECT_LT(StopTime(graph), kStopLimitMs);
    const auto counts = graph.Pin(category).As<IAMDroppedFrames>();
    LONG lost = 0;
    LONG delivered = 0;
    EXPECT_EQ(counts->GetNumDropped(&lost), S_OK);
    EXPECT_EQ(counts->GetNumNotDropped(&delivered), S_OK);
    EXPECT_GE(delivered, 4) << "a busy machine sends fewer";
    EXPECT_LE(delivered, 22);
    const std::vector<SeenPicture> seen = graph.Seen();
    EXPECT_NEAR(static_cast<double>(lost), seen.back().marks->picture + 1 - static_cast<double>(seen.size()),
                4);
    EXPECT_GT(lost, 30);
    const StreamCounts& told = category == PIN_CATEGORY_CAPTURE ? cards->capture : cards->preview;
    EXPECT_EQ(static_cast<LONG>(told.lost), lost);
    EXPECT_EQ(static_cast<LONG>(told.delivered), delivered);
  }
}

TEST_F(TvCardTest, AStreamFlowsWhenItIsOrderedTo) {
  const PluggedCards cards;
  CardGraph graph;
  ASSERT_EQ(graph.Watch(PIN_CATEGORY_CAPTURE), S_OK);
  const auto control = graph.Pin(PIN_CATEGORY_CAPTURE).As<IAMStreamControl>();
  const REFERENCE_TIME start = kSecond / 2;
  const REFERENCE_TIME stop = kSecond;
  EXPECT_EQ(control->StartAt(&start, 7), S_OK);
  EXPECT_EQ(control->StopAt(&stop, FALSE, 8), S_OK);
  graph.Run();
  ::Sleep(1500);
  graph.control->Stop();
  const std::vector<SeenPicture> seen = graph.Seen();
  ASSERT_FALSE(seen.empty());
  EXPECT_GE(seen.front().begin, start);
  EXPECT_LT(seen.front().begin, start + 2 * CaptureFormat{}.frameTime);
  EXPECT_LT(seen.back().begin, stop);
  EXPECT_GE(seen.back().begin, stop - 3 * CaptureFormat{}.frameTime);
}

// Answers a dialog of this title once it is there: picks a line of its list and presses a button.
std::thread Answer(const wchar_t* title, int line, int button) {
  return std::thread([=] {
    HWND dialog = nullptr;
    for (int i = 0; i < 300 && dialog == nullptr; ++i, ::Sleep(10)) dialog = ::FindWindowW(L"#32770", title);
    constexpr int kList = 1000;
    ::SendDlgItemMessageW(dialog, kList, LB_SETCURSEL, static_cast<WPARAM>(line), 0);
    ::PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0);
  });
}

TEST_F(TvCardTest, TheDriversDialogsChooseInputAndFormat) {
  const PluggedCards cards({CardKind::kTv, CardKind::kCamera});
  CardGraph graph;
  const CardGraph camera(kCamera);
  const auto dialogs = graph.card.As<IAMVfwCaptureDialogs>();
  ASSERT_TRUE(dialogs);
  EXPECT_EQ(camera.card.As<IAMVfwCaptureDialogs>()->HasDialog(VfwCaptureDialog_Source), S_FALSE);
  EXPECT_EQ(dialogs->HasDialog(3), S_FALSE);
  const auto show = [&](int kind, const wchar_t* title, int line, int button) {
    EXPECT_EQ(dialogs->HasDialog(kind), S_OK);
    std::thread answering = Answer(title, line, button);
    const HRESULT result = dialogs->ShowDialog(kind, nullptr);
    answering.join();
    return result;
  };
  EXPECT_EQ(show(VfwCaptureDialog_Source, L"Video Source", 2, IDOK), S_OK);
  EXPECT_EQ(cards->routed, 2U);
  EXPECT_EQ(show(VfwCaptureDialog_Source, L"Video Source", 0, IDCANCEL), S_OK);
  EXPECT_EQ(cards->routed, 2U);
  EXPECT_EQ(show(VfwCaptureDialog_Display, L"Video Display", 0, IDOK), S_OK);
  EXPECT_EQ(show(VfwCaptureDialog_Format, L"Video Format", 2, IDOK), S_OK);
  ASSERT_EQ(graph.Watch(PIN_CATEGORY_PREVIEW), S_OK);
  EXPECT_EQ(show(VfwCaptureDialog_Format, L"Video Format", 3, IDOK), VFW_E_CANNOT_CONNECT);
  graph.Run();
  EXPECT_GE(graph.WaitFor([](const SeenPicture& one) { return one.marks && one.marks->chapter == 2; }), 0);
  EXPECT_EQ(dialogs->ShowDialog(VfwCaptureDialog_Source, nullptr), VFW_E_NOT_STOPPED);
  graph.control->Stop();
  EXPECT_EQ(graph.size, (Size{320, 240})) << "a connection keeps its format";
}

TEST_F(TvCardTest, APulledCardIsLost) {
  const PluggedCards cards;
  CardGraph graph;
  ASSERT_EQ(graph.Watch(PIN_CATEGORY_PREVIEW), S_OK);
  graph.Run();
  ASSERT_GE(graph.WaitForChannel(4), 0);
  cards.PullOut(kTv);
  long code = 0;
  LONG_PTR first = 0;
  LONG_PTR second = 1;
  const bool lost = PumpUntil([&] {
    if (graph.events->GetEvent(&code, &first, &second, 0) != S_OK) return false;
    graph.events->FreeEventParams(code, first, second);
    return code == EC_DEVICE_LOST && second == 0;
  });
  EXPECT_TRUE(lost);
  EXPECT_LT(StopTime(graph), kStopLimitMs);
}

}  // namespace
}  // namespace quorvex
