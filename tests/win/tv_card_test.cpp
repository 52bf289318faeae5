// The virtual capture cards as any program meets them: the platform's device enumerator, a bare filter graph.
#include <gtest/gtest.h>
#include <windows.h>

#include <dshow.h>

#include "platform/tv/capture_type.h"
#include "tests/support/card_graph.h"
#include "tests/support/com_test.h"

namespace quorvex {
namespace {

constexpr ULONGLONG kStopLimitMs = 200;

using TvCardTest = ComTest;

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
  const auto accepts = [&](MediaType type) {
    return graph.Pin(PIN_CATEGORY_CAPTURE)->QueryAccept(&type.Get());
  };
  EXPECT_EQ(accepts(TypeOf({})), S_OK);
  EXPECT_EQ(accepts(TypeOf({.size = {1920, 1080}})), S_FALSE) << "it is not what would come";
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
    EXPECT_LT(Milliseconds([&] { graph.control->Stop(); }), kStopLimitMs);
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

TEST_F(TvCardTest, WithoutAClockTheyComeByTheCardsOwn) {
  const PluggedCards cards;
  CardGraph graph;
  ASSERT_EQ(graph.Watch(PIN_CATEGORY_CAPTURE), S_OK);
  ASSERT_EQ(graph.graph.As<IMediaFilter>()->SetSyncSource(nullptr), S_OK);
  graph.Run();
  ASSERT_GE(graph.WaitForChannel(4), 0);
  ::Sleep(1000);
  graph.control->Stop();
  EXPECT_NEAR(static_cast<double>(graph.Seen().size()), 30, 6);
}

TEST_F(TvCardTest, OneWithoutAPreviewPinIsSplit) {
  const PluggedCards cards({CardKind::kCapture});
  CardGraph graph(kCards[2]);
  ComPtr<ICaptureGraphBuilder> builder;
  ASSERT_EQ(::CoCreateInstance(CLSID_CaptureGraphBuilder, nullptr, CLSCTX_INPROC_SERVER,
                               __uuidof(ICaptureGraphBuilder), builder.ReceiveVoid()),
            S_OK);
  ASSERT_EQ(builder->SetFiltergraph(graph.graph.Get()), S_OK);
  const auto preview = [&] {
    return builder->RenderStream(&PIN_CATEGORY_PREVIEW, graph.card.Get(), nullptr, nullptr);
  };
  const auto findWindow = [&](const GUID& category) {
    ComPtr<IUnknown> found;
    return builder->FindInterface(&category, graph.card.Get(), IID_IVideoWindow, found.ReceiveVoid());
  };
  EXPECT_EQ(preview(), VFW_S_NOPREVIEWPIN);
  EXPECT_EQ(findWindow(PIN_CATEGORY_CAPTURE), S_OK);
  EXPECT_EQ(findWindow(PIN_CATEGORY_PREVIEW), E_FAIL);
  // The tee has a pin left for the file.
  graph.pictures = ComPtr<RecordingSink>::Attach(new RecordingSink(MEDIATYPE_Video));
  graph.graph->AddFilter(graph.pictures.Get(), L"file");
  EXPECT_EQ(builder->RenderStream(&PIN_CATEGORY_CAPTURE, graph.card.Get(), nullptr, graph.pictures.Get()),
            S_OK);
  EXPECT_EQ(preview(), E_INVALIDARG);
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
  AM_STREAM_INFO told{};
  EXPECT_EQ(control->GetInfo(&told), S_OK);
  EXPECT_EQ(told.dwFlags, static_cast<DWORD>(AM_STREAM_INFO_START_DEFINED | AM_STREAM_INFO_STOP_DEFINED));
  EXPECT_EQ(std::pair(told.tStart, told.dwStartCookie), std::pair(start, DWORD{7}));
  EXPECT_EQ(std::pair(told.tStop, told.dwStopCookie), std::pair(stop, DWORD{8}));
  graph.Run();
  ::Sleep(1500);
  graph.control->Stop();
  const std::vector<SeenPicture> seen = graph.Seen();
  ASSERT_FALSE(seen.empty());
  EXPECT_GE(seen.front().begin, start);
  EXPECT_LT(seen.back().begin, stop);
  // Whoever is connected next does not know of the orders.
  EXPECT_EQ(graph.graph->RemoveFilter(graph.pictures.Get()), S_OK);
  ASSERT_EQ(graph.Watch(PIN_CATEGORY_CAPTURE), S_OK);
  graph.Run();
  EXPECT_GE(graph.WaitFor([&](const SeenPicture& one) { return one.begin > stop; }), 0);
  graph.control->Stop();
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
  const CardGraph camera(kCards[1]);
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

}  // namespace
}  // namespace quorvex
