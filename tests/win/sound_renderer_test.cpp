// The sound renderer as any program meets it: a filter graph with the media source.
#include <gtest/gtest.h>
#include <windows.h>

#include <tlhelp32.h>

#include <filesystem>

#include "platform/common/counter_time.h"
#include "platform/common/wave_output.h"
#include "tests/support/com_test.h"
#include "tests/support/media_graph.h"
#include "tests/support/pump.h"

namespace quorvex {
namespace {

// {5B4A9D0C-3C1E-4F0B-8C57-7E1D2A6F9B34}: the class that the platform is to find for sound.
constexpr CLSID kRendererUnderTest = {
    0x5b4a9d0c, 0x3c1e, 0x4f0b, {0x8c, 0x57, 0x7e, 0x1d, 0x2a, 0x6f, 0x9b, 0x34}};

constexpr MediaTime kStopLimit = 200 * kMillisecond;
constexpr MediaTime kLead = 200 * kMillisecond;  // by which Wine's graph begins after Run
constexpr MediaTime kBusy = 250 * kMillisecond;  // what a busy machine may add

std::wstring Media(const std::string& name) {
  return (std::filesystem::path(QUORVEX_TEST_MEDIA) / name).wstring();
}

template <typename Call>
MediaTime TimeOf(Call call) {
  const MediaTime begin = CounterTime();
  call();
  return CounterTime() - begin;
}

class SoundRendererTest : public ComTest {
 protected:
  // A graph with a file of four seconds, and its sound renderer.
  void Open(const std::string& name) {
    ASSERT_EQ(graph.Render(Media(name)), S_OK);
    renderer = graph.FilterOf(kRendererUnderTest);
    ASSERT_TRUE(renderer) << "the platform took another renderer";
  }

  DWORD Count(DWORD which) {
    ComPtr<IAMAudioRendererStats> statistics;
    DWORD value = 0;
    EXPECT_EQ(renderer->QueryInterface(IID_IAMAudioRendererStats, statistics.ReceiveVoid()), S_OK);
    if (statistics) statistics->GetStatParam(which, &value, nullptr);
    return value;
  }

  // How often the graph has told of its end since the last look.
  int Ends() {
    int ends = 0;
    long code = 0;
    LONG_PTR first = 0;
    LONG_PTR second = 0;
    while (graph.events->GetEvent(&code, &first, &second, 0) == S_OK) {
      ends += code == EC_COMPLETE ? 1 : 0;
      graph.events->FreeEventParams(code, first, second);
    }
    return ends;
  }

  MediaGraph graph;
  ComPtr<IBaseFilter> renderer;
};

TEST_F(SoundRendererTest, AFilesSoundIsHeardWholeAndItsEndToldThen) {
  Open("ramp.wav");
  const MediaTime begin = CounterTime();
  ASSERT_HRESULT_SUCCEEDED(graph.control->Run());
  ASSERT_TRUE(graph.Completes(8000));
  const MediaTime took = CounterTime() - begin;
  EXPECT_GE(took, 4 * kSecond + kLead - 20 * kMillisecond);
  EXPECT_LE(took, 4 * kSecond + kLead + kBusy);
  EXPECT_EQ(Count(AM_AUDREND_STAT_PARAM_BUFFERFULLNESS), 0U);
  EXPECT_EQ(Count(AM_AUDREND_STAT_PARAM_SLAVE_DROPWRITE_DUR), 0U);
  EXPECT_LE(Count(AM_AUDREND_STAT_PARAM_SILENCE_DUR), kLead / kMillisecond + 50) << "but for the start";
}

TEST_F(SoundRendererTest, ItsClockGoesEvenly) {
  Open("ramp.wav");
  ComPtr<IReferenceClock> clock;
  ASSERT_EQ(renderer->QueryInterface(__uuidof(IReferenceClock), clock.ReceiveVoid()), S_OK);
  ComPtr<IReferenceClock> leading;
  ASSERT_HRESULT_SUCCEEDED(graph.control->Run());
  graph.graph.As<IMediaFilter>()->GetSyncSource(leading.Receive());
  EXPECT_EQ(leading.Get(), clock.Get()) << "it is the graph's";
  MediaTime lastTold = 0;
  MediaTime last = 0;
  clock->GetTime(&lastTold);
  last = CounterTime();
  const MediaTime begin = last;
  const MediaTime beginTold = lastTold;
  while (last - begin < 2 * kSecond) {
    ::Sleep(3);
    MediaTime told = 0;
    const MediaTime before = CounterTime();
    clock->GetTime(&told);
    const MediaTime after = CounterTime();
    EXPECT_GE(told, lastTold);
    EXPECT_LE(told - lastTold, (after - last) * 102 / 100 + kMillisecond);
    EXPECT_GE(told - lastTold, (before - last) * 98 / 100 - kMillisecond);
    lastTold = told;
    last = before;
  }
  EXPECT_NEAR(static_cast<double>(lastTold - beginTold), static_cast<double>(last - begin), 0.02 * kSecond);
}

TEST_F(SoundRendererTest, PausesSeeksAndStopsPromptlyAndEndsOnce) {
  Open("ramp.wav");
  ASSERT_HRESULT_SUCCEEDED(graph.control->Pause());
  EXPECT_TRUE(graph.Settles());
  ASSERT_HRESULT_SUCCEEDED(graph.control->Run());
  ::Sleep(600);
  EXPECT_LE(TimeOf([&] { graph.control->Pause(); }), kStopLimit);
  EXPECT_TRUE(graph.Settles());
  const MediaTime paused = graph.Position();
  ::Sleep(300);
  EXPECT_EQ(graph.Position(), paused);
  for (const bool running : {false, true}) {
    if (running) {
      ASSERT_HRESULT_SUCCEEDED(graph.control->Run());
      EXPECT_TRUE(graph.Settles());
    }
    for (const MediaTime to : {kSecond, 3 * kSecond, kSecond / 2, 2 * kSecond}) {
      EXPECT_LE(TimeOf([&] { EXPECT_EQ(graph.Seek(to), S_OK); }), kSecond / 2);
      EXPECT_TRUE(graph.Settles());
    }
  }
  EXPECT_EQ(Ends(), 0);
  EXPECT_EQ(graph.Seek(35 * kSecond / 10), S_OK);
  for (int round = 0; round < 2; ++round) {
    const MediaTime begin = CounterTime();
    ASSERT_TRUE(PumpUntil([&] { return Ends() == 1; })) << round;
    EXPECT_GE(CounterTime() - begin, 4 * kSecond / 10);
    ::Sleep(100);
    EXPECT_EQ(Ends(), 0) << "told twice";
    EXPECT_EQ(graph.Seek(34 * kSecond / 10), S_OK) << "again, without a stop";
  }
  ASSERT_TRUE(PumpUntil([&] { return Ends() == 1; }));
  graph.control->Pause();
  graph.control->Run();
  EXPECT_TRUE(PumpUntil([&] { return Ends() == 1; })) << "a graph that runs again counts its ends anew";
  EXPECT_EQ(graph.Seek(34 * kSecond / 10), S_OK);
  // In the middle of things, paused, and cued.
  EXPECT_LE(TimeOf([&] { graph.control->Stop(); }), kStopLimit);
  ASSERT_HRESULT_SUCCEEDED(graph.control->Run());
  ::Sleep(50);
  EXPECT_LE(TimeOf([&] { graph.control->Stop(); }), kStopLimit);
  ASSERT_HRESULT_SUCCEEDED(graph.control->Pause());
  EXPECT_LE(TimeOf([&] { graph.control->Stop(); }), kStopLimit);
  renderer.Reset();
  ULONG left = 1;
  EXPECT_LE(TimeOf([&] { left = graph.Release(); }), kStopLimit);
  EXPECT_EQ(left, 0U);
}

int ThreadsOfThisProcess() {
  const UniqueHandle all(::CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
  THREADENTRY32 entry{};
  entry.dwSize = sizeof entry;
  int count = 0;
  for (BOOL more = ::Thread32First(all.Get(), &entry); more != FALSE;
       more = ::Thread32Next(all.Get(), &entry))
    count += entry.th32OwnerProcessID == ::GetCurrentProcessId() ? 1 : 0;
  return count;
}

TEST_F(SoundRendererTest, GraphsLeaveNoThreadBehind) {
  const auto play = [] {
    MediaGraph one;
    one.graph->AddFilter(ComPtr<RecordingSink>::Attach(new RecordingSink(MEDIATYPE_Video)).Get(),
                         L"pictures");
    ASSERT_EQ(one.Render(Media("mpeg4_mp3.avi")), S_OK);
    ASSERT_HRESULT_SUCCEEDED(one.control->Run());
    ASSERT_TRUE(one.Settles());
    EXPECT_EQ(one.Release(), 0U);
  };
  for (int i = 0; i < 10; ++i) play();
  const int before = ThreadsOfThisProcess();
  ASSERT_GT(before, 0);
  for (int i = 0; i < 100; ++i) play();
  EXPECT_TRUE(PumpUntil([&] { return ThreadsOfThisProcess() <= before; }))
      << ThreadsOfThisProcess() << before;
}

TEST_F(SoundRendererTest, AGraphMayGoAsSoonAsItTellsOfItsEnd) {
  for (int i = 0; i < 20; ++i) {
    MediaGraph one;
    ASSERT_EQ(one.Render(Media("ramp.wav")), S_OK);
    ASSERT_EQ(one.Seek(395 * kSecond / 100), S_OK);
    ASSERT_HRESULT_SUCCEEDED(one.control->Run());
    HANDLE told = nullptr;
    OAEVENT event = 0;
    ASSERT_EQ(one.events->GetEventHandle(&event), S_OK);
    told = reinterpret_cast<HANDLE>(event);
    ASSERT_EQ(::WaitForSingleObject(told, 3000), WAIT_OBJECT_0);
    EXPECT_EQ(one.Release(), 0U) << i;
  }
}

MediaType Pcm(int channels, int rate, int bits) {
  const MediaType like = MediaType::Pcm16(channels, rate);
  AM_MEDIA_TYPE type = like.Get();
  WAVEFORMATEX wave = *reinterpret_cast<const WAVEFORMATEX*>(type.pbFormat);
  wave.wBitsPerSample = static_cast<WORD>(bits);
  wave.nBlockAlign = static_cast<WORD>(channels * bits / 8);
  wave.nAvgBytesPerSec = wave.nBlockAlign * wave.nSamplesPerSec;
  type.pbFormat = reinterpret_cast<BYTE*>(&wave);
  return MediaType(type);
}

TEST_F(SoundRendererTest, TakesPlainSoundOfTheseFormats) {
  const struct {
    int channels, rate, bits;
    bool taken;
  } cases[] = {{1, 8000, 8, true},    {2, 11025, 8, true},   {1, 22050, 16, true},  {2, 96000, 16, true},
               {6, 48000, 16, false}, {2, 48000, 24, false}, {2, 192000, 16, false}};
  ASSERT_EQ(::CoCreateInstance(kRendererUnderTest, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IBaseFilter),
                               renderer.ReceiveVoid()),
            S_OK);
  ComPtr<IPin> in;
  ASSERT_EQ(renderer->FindPin(L"In", in.Receive()), S_OK);
  for (const auto& [channels, rate, bits, taken] : cases) {
    const MediaType type = Pcm(channels, rate, bits);
    EXPECT_EQ(in->QueryAccept(&type.Get()), taken ? S_OK : S_FALSE) << channels << ' ' << rate << ' ' << bits;
  }
}

}  // namespace
}  // namespace quorvex
