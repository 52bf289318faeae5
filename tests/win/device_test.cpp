#include "devices/device.h"

#include <tuple>

#include "devices/null_device.h"
#include "mixer/mixer.h"
#include "tests/support/panel.h"

namespace quorvex {
namespace {

// The operations that make up a device, its destructor aside.
constexpr auto kOperations = std::make_tuple(
    &CDevice::Open, &CDevice::QueryControls, &CDevice::Activate, &CDevice::LoadMedia, &CDevice::ReservedA,
    &CDevice::Play, &CDevice::Eject, &CDevice::Pause, &CDevice::Stop, &CDevice::NextItem,
    &CDevice::PreviousItem, &CDevice::FastForward, &CDevice::EndScan, &CDevice::Rewind, &CDevice::PlayChapter,
    &CDevice::Up, &CDevice::Down, &CDevice::ShowMenu, &CDevice::ShowStreamMenu, &CDevice::SelectSubtitle,
    &CDevice::SelectAudioTrack, &CDevice::ToggleClosedCaption, &CDevice::SelectVideoInput,
    &CDevice::EnterDigit, &CDevice::ConfirmEntry, &CDevice::AddChannel, &CDevice::DeleteChannel,
    &CDevice::RecallLastChannel, &CDevice::Record, &CDevice::IsMenuActive, &CDevice::MenuClick,
    &CDevice::MenuPoint, &CDevice::OnGraphEvent, &CDevice::OnMciNotify, &CDevice::OnTick,
    &CDevice::OnRecordTick, &CDevice::ReservedB, &CDevice::HasVideoAdjustment, &CDevice::AdjustUp,
    &CDevice::AdjustDown, &CDevice::ShowVideoAdjustment, &CDevice::Increase, &CDevice::Decrease,
    &CDevice::BuildPlayOrder, &CDevice::LoadSettings, &CDevice::SaveSettings, &CDevice::ApplyPlayOrder,
    &CDevice::InitPlaylistDialog, &CDevice::UpdatePlaylistTotals, &CDevice::SavePlaylistDialog,
    &CDevice::ReservedC, &CDevice::RenamePlaylistTrack, &CDevice::OnRandomChanged, &CDevice::AutoTuneChannels,
    &CDevice::HasCaptureDialog, &CDevice::ShowCaptureFormatDialog, &CDevice::ShowCaptureSourceDialog,
    &CDevice::ShowCaptureDisplayDialog, &CDevice::SetCaptureFile, &CDevice::Close);
static_assert(std::tuple_size_v<decltype(kOperations)> + 1 == 61);

// A filter graph's control and seeking that write down what is asked of them.
class FakeGraph final : public IMediaControl, public IMediaSeeking {
 public:
  explicit FakeGraph(std::string& notes) : log(notes) {}

  STDMETHODIMP QueryInterface(REFIID, void** object) override {
    *object = nullptr;
    return E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
  STDMETHODIMP_(ULONG) Release() override {
    if (--references == 0) log += "released\n";
    return references;
  }

  STDMETHODIMP Run() override { return Unexpected("Run"); }
  STDMETHODIMP Pause() override { return Note("Pause"); }
  STDMETHODIMP Stop() override {
    Note("Stop");
    return stopResult;
  }
  STDMETHODIMP GetState(LONG timeout, OAFilterState*) override {
    return Note("GetState " + std::to_string(timeout));
  }
  STDMETHODIMP SetPositions(LONGLONG* current, DWORD currentFlags, LONGLONG* stop, DWORD stopFlags) override {
    EXPECT_EQ(stop, nullptr);
    return Note("SetPositions " + std::to_string(*current) + ' ' + std::to_string(currentFlags) + ' ' +
                std::to_string(stopFlags));
  }

  STDMETHODIMP GetTypeInfoCount(UINT*) override { return Unexpected("GetTypeInfoCount"); }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return Unexpected("GetTypeInfo"); }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return Unexpected("GetIDsOfNames");
  }
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
    return Unexpected("Invoke");
  }
  STDMETHODIMP RenderFile(BSTR) override { return Unexpected("RenderFile"); }
  STDMETHODIMP AddSourceFilter(BSTR, IDispatch**) override { return Unexpected("AddSourceFilter"); }
  STDMETHODIMP get_FilterCollection(IDispatch**) override { return Unexpected("get_FilterCollection"); }
  STDMETHODIMP get_RegFilterCollection(IDispatch**) override { return Unexpected("get_RegFilterCollection"); }
  STDMETHODIMP StopWhenReady() override { return Unexpected("StopWhenReady"); }
  STDMETHODIMP GetCapabilities(DWORD*) override { return Unexpected("GetCapabilities"); }
  STDMETHODIMP CheckCapabilities(DWORD*) override { return Unexpected("CheckCapabilities"); }
  STDMETHODIMP IsFormatSupported(const GUID*) override { return Unexpected("IsFormatSupported"); }
  STDMETHODIMP QueryPreferredFormat(GUID*) override { return Unexpected("QueryPreferredFormat"); }
  STDMETHODIMP GetTimeFormat(GUID*) override { return Unexpected("GetTimeFormat"); }
  STDMETHODIMP IsUsingTimeFormat(const GUID*) override { return Unexpected("IsUsingTimeFormat"); }
  STDMETHODIMP SetTimeFormat(const GUID*) override { return Unexpected("SetTimeFormat"); }
  STDMETHODIMP GetDuration(LONGLONG*) override { return Unexpected("GetDuration"); }
  STDMETHODIMP GetStopPosition(LONGLONG*) override { return Unexpected("GetStopPosition"); }
  STDMETHODIMP GetCurrentPosition(LONGLONG*) override { return Unexpected("GetCurrentPosition"); }
  STDMETHODIMP ConvertTimeFormat(LONGLONG*, const GUID*, LONGLONG, const GUID*) override {
    return Unexpected("ConvertTimeFormat");
  }
  STDMETHODIMP GetPositions(LONGLONG*, LONGLONG*) override { return Unexpected("GetPositions"); }
  STDMETHODIMP GetAvailable(LONGLONG*, LONGLONG*) override { return Unexpected("GetAvailable"); }
  STDMETHODIMP SetRate(double) override { return Unexpected("SetRate"); }
  STDMETHODIMP GetRate(double*) override { return Unexpected("GetRate"); }
  STDMETHODIMP GetPreroll(LONGLONG*) override { return Unexpected("GetPreroll"); }

  HRESULT stopResult = S_OK;

 private:
  HRESULT Note(const std::string& what) {
    log += what + '\n';
    return S_OK;
  }
  static HRESULT Unexpected(const char* what) {
    ADD_FAILURE() << what;
    return E_UNEXPECTED;
  }

  std::string& log;
  ULONG references = 0;
};

class GraphDevice : public CNullDevice {
 public:
  explicit GraphDevice(std::string& notes) : log(notes) {}
  void Use(FakeGraph& graph, bool seekable) {
    mediaControl = ComPtr<IMediaControl>::Share(&graph);
    if (seekable) mediaSeeking = ComPtr<IMediaSeeking>::Share(&graph);
  }
  bool Play(int item, int) override {
    log += "Play " + std::to_string(item) + '\n';
    return true;
  }
  bool ConfirmEntry() override {
    log += "confirmed " + std::to_string(enteredNumber) + '\n';
    entryActive = false;
    return true;
  }

 private:
  std::string& log;
};

using DeviceTest = PanelTest;

TEST_F(DeviceTest, ANewDeviceResetsTheDisplayAndShowsIdle) {
  SetAllDisplayElements(true);
  SetDisplayText("old");
  muted = true;
  const CNullDevice device;
  EXPECT_EQ(Shown(kHoursTens), kBlankDigit);
  EXPECT_EQ(Shown(kFirstNumber), kBlankDigit);
  EXPECT_EQ(Shown(kTrackLabel), 0);
  EXPECT_EQ(ShownText(), "");
  EXPECT_EQ(Shown(kIdleLamp), 1);
  EXPECT_EQ(Shown(kCdLamp) + Shown(kPauseLamp) + Shown(kRecordLamp) + Shown(kTimerLamp), 0);
  EXPECT_EQ(Shown(kMuteLamp), 1) << "the sound is muted whatever the device";
  EXPECT_TRUE(IsLit(kCommandMute));
  muted = false;
}

TEST_F(DeviceTest, LampsAndButtonsShowTheState) {
  CNullDevice device;
  currentDeviceType = DeviceType::kDvd;
  device.playState = PlayState::kPaused;
  device.recording = device.captionsOn = device.menuShown = device.timerOn = device.randomOn = true;
  device.repeatMode = RepeatMode::kAll;
  device.UpdateStateLamps();
  device.UpdateButtonStates();
  for (const int lamp : {kPauseLamp, kRecordLamp, kRandomLamp, kRepeatLamp, kRepeatAllLamp, kMenuLamp,
                         kCaptionLamp, kTimerLamp, kDvdLamp}) {
    EXPECT_EQ(Shown(lamp), 1) << lamp;
  }
  for (const int lamp : {kMuteLamp, kRepeatOneLamp, kIdleLamp, kTvLamp, kCdLamp, kFileLamp})
    EXPECT_EQ(Shown(lamp), 0) << lamp;
  for (const int command : {kCommandTimer, kCommandRepeat, kCommandRandom, kCommandPause, kCommandRecord,
                            kCommandClosedCaption, kCommandMenu}) {
    EXPECT_TRUE(IsLit(command)) << command;
  }
  EXPECT_FALSE(IsLit(kCommandPlay));
  device.playState = PlayState::kPlaying;
  device.UpdateButtonStates();
  EXPECT_TRUE(IsLit(kCommandPlay));
  EXPECT_FALSE(IsLit(kCommandPause));
}

TEST_F(DeviceTest, AGraphIsPausedAndResumedByPlaying) {
  FakeGraph graph(log);
  {
    GraphDevice device(log);
    EXPECT_FALSE(device.Pause()) << "without a graph there is nothing to pause";
    EXPECT_EQ(device.playState, PlayState::kStopped);
    device.Use(graph, false);
    EXPECT_TRUE(device.Pause());
    EXPECT_EQ(device.playState, PlayState::kPaused);
    EXPECT_EQ(Shown(kPauseLamp), 1);
    EXPECT_TRUE(device.Pause());
    EXPECT_EQ(log, "Pause\nPlay 0\n");
    log.clear();
    EXPECT_FALSE(device.Stop()) << "a graph that cannot seek is not stopped here";
    EXPECT_EQ(log, "");
  }
  EXPECT_EQ(log, "released\n");
}

TEST_F(DeviceTest, AStoppedGraphRestsAtItsStart) {
  FakeGraph graph(log);
  GraphDevice device(log);
  device.Use(graph, true);
  device.playState = PlayState::kPlaying;
  EXPECT_TRUE(device.Stop());
  EXPECT_EQ(log, "Pause\nSetPositions 0 1 0\nGetState -1\nStop\n");
  EXPECT_EQ(device.playState, PlayState::kStopped);
  graph.stopResult = E_FAIL;
  device.playState = PlayState::kPlaying;
  EXPECT_FALSE(device.Stop());
  EXPECT_EQ(device.playState, PlayState::kStopped);
}

TEST_F(DeviceTest, NumbersAreTypedOnATvDeviceOnly) {
  GraphDevice device(log);
  device.highestNumber = 125;
  device.EnterDigit(7);
  EXPECT_FALSE(device.entryActive);
  currentDeviceType = DeviceType::kTv;
  const auto units = [] { return Shown(kFirstNumber + 2); };
  device.EnterDigit(1);
  EXPECT_EQ(units(), 1);
  EXPECT_NE(device.entryTimer, 0U);
  device.EnterDigit(2);
  EXPECT_EQ(units(), 2);
  EXPECT_EQ(log, "") << "120 would still be a channel";
  device.EnterDigit(5);
  EXPECT_EQ(log, "confirmed 125\n");
  device.EnterDigit(1);
  device.EnterDigit(3);
  EXPECT_EQ(log, "confirmed 125\nconfirmed 13\n");
}

TEST_F(DeviceTest, ATypedNumberIsDroppedAfterFourSeconds) {
  currentDevice = std::make_unique<GraphDevice>(log);
  currentDeviceType = DeviceType::kTv;
  currentDevice->highestNumber = 99;
  currentDevice->currentNumber = 42;
  currentDevice->EnterDigit(7);
  PumpFor(2500);
  EXPECT_EQ(Shown(kFirstNumber + 2), 7);
  EXPECT_TRUE(PumpUntil([] { return !currentDevice->entryActive; }));
  EXPECT_EQ(Shown(kFirstNumber + 1), 4);
  EXPECT_EQ(Shown(kFirstNumber + 2), 2);
  EXPECT_EQ(log, "");
}

TEST_F(DeviceTest, TheEmptyDeviceNeverOpens) {
  CNullDevice device;
  EXPECT_FALSE(device.Open() || device.QueryControls() || device.Activate());
}

}  // namespace
}  // namespace quorvex
