// Drivers and objects that fail: every platform call of each device's way to its picture or sound, failed in
// turn. Whatever fails, the user is told what the table says, a device that cannot be opened leaves an idle
// panel, nothing is left of it, and it opens as ever the next time.
#include <evcode.h>

#include "base/ini_document.h"
#include "resources/ids.h"
#include "tests/support/cd_panel.h"
#include "tests/support/dvd_panel.h"
#include "tests/support/fake_media.h"
#include "tests/support/fault_table.h"
#include "tests/support/mci_calls.h"
#include "tests/support/tv_panel.h"

extern "C" decltype(&::DialogBoxParamA) __imp_DialogBoxParamA;

namespace quorvex {
namespace {

using enum Outcome;

Boxes Box(const std::string& text) { return {"Quorvex: " + text}; }

FaultRow Fails(const char* call, const std::string& box) { return {call, kFails, Box(box)}; }
FaultRow FailsSilently(const char* call, const std::string& text) { return {call, kFails, {}, text}; }
FaultRow Opens(const char* call, const std::string& box) { return {call, kOpens, Box(box)}; }

// The panel with a device of the kind, or without one.
template <typename Panel>
class FaultTest : public Panel {
 protected:
  using Panel::IsLit;
  using Panel::Number;
  using Panel::Press;
  using Panel::Shown;
  using Panel::ShownText;

  static void ExpectIdle() {
    EXPECT_EQ(currentDevice, nullptr);
    EXPECT_EQ(currentDeviceType, DeviceType::kNone);
    EXPECT_EQ(currentCaptureDevice, -1);
    EXPECT_EQ(theVideoWindow, nullptr);
    for (int lamp = kIdleLamp; lamp <= kFileLamp; ++lamp) EXPECT_EQ(Shown(lamp), lamp == kIdleLamp ? 1 : 0);
    for (const int command :
         {kCommandPlay, kCommandPause, kCommandRecord, kCommandClosedCaption, kCommandMenu})
      EXPECT_FALSE(IsLit(command)) << command;
    EXPECT_EQ(Number(kFirstNumber) + Number(kSecondNumber), 0);
  }
  static void Expect(const FaultRow& row, DeviceType kind, bool picture = true) {
    EXPECT_EQ(ShownText(), row.text);
    if (row.outcome == kFails) {
      ExpectIdle();
      return;
    }
    ASSERT_NE(currentDevice, nullptr);
    EXPECT_EQ(currentDevice->kind, kind);
    EXPECT_EQ(Shown(kIdleLamp + static_cast<int>(kind)), 1);
    EXPECT_EQ(theVideoWindow != nullptr, picture);
  }
  static void Close(const ComScript& script, const FakeRenderer& renderer) {
    Press(kCommandCloseDevice);
    ExpectIdle();
    EXPECT_EQ(script.alive, 0) << "something is still held";
    EXPECT_EQ(renderer.references, 1U);
    EXPECT_EQ(::FindWindowA("PVideo", nullptr), nullptr);
  }
};

using DvdFaultTest = FaultTest<DvdTest>;

TEST_F(DvdFaultTest, EveryCallOfOpeningADisc) {
  MciCalls mci(dvd);
  FaultTable table(
      dvd,
      {
          Fails("Create", "CoCreateInstance(CLSID_DvdGraphBuilder)"),
          {"Render",
           kFails,
           {"Quorvex: Error initializing DVD device.", "Quorvex: An unknown error has occurred"}},
          FailsSilently("GetFiltergraph", "No DVD graph"),
          Fails("IID_IDvdControl", "IID_IDvdControl"),
          Fails("IID_IDvdInfo", "IID_IDvdInfo"),
          Fails("IID_IMediaControl", "IID_IMediaControl"),
          Fails("IID_IMediaEventEx", "IID_IMediaEventEx"),
          Fails("IID_IMediaSeeking", "IID_IMediaSeeking"),
          Fails("IID_IBasicAudio", "IID_IBasicAudio"),
          Fails("IID_IBasicVideo", "IID_IBasicVideo"),
          FailsSilently("get_VideoWidth", "The DVD has no picture"),
          FailsSilently("get_VideoHeight", "The DVD has no picture"),
          Fails("IID_IVideoWindow", "IID_IVideoWindow"),
      },
      {[] { Press(kCommandDvd); }, [](const FaultRow& row) { Expect(row, DeviceType::kDvd); },
       [&] {
         Close(dvd, dvd.renderer);
         EXPECT_TRUE(mci.open.empty());
       }});
  table.Run();
}

class FileFaultTest : public FaultTest<PanelTest> {
 protected:
  static constexpr char kPath[] = "C:\\some.avi";

  ~FileFaultTest() override {
    currentDevice.reset();
    DeleteVideoWindow();
  }

  // A film, and then what sounds only.
  void Open() {
    media.hasPicture = true;
    if (!SwitchToFile()) return;
    filmShown = theVideoWindow != nullptr;
    media.hasPicture = false;
    currentDevice->NextItem();
  }

  bool filmShown = false;
  FakeMedia media;
};

TEST_F(FileFaultTest, EveryCallOfOpeningTwoFiles) {
  stores.Write("mfiles.abm", std::string("[Mine]\r\nTracks=2\r\n1=") + kPath + "\r\n2=" + kPath + "\r\n");
  currentPlaylist = "Mine";
  FaultTable table(
      media,
      {
          Fails("Create graph", "CoCreateInstance(CLSID_FilterGraph)"),
          Fails("RenderFile", std::string(kPath) + "\r\n\nCannot playback file.  Unsupported file format."),
          Fails("IID_IMediaControl", "IID_IMediaControl"),
          Fails("IID_IMediaEventEx", "IID_IMediaEventEx"),
          Fails("IID_IMediaSeeking", "IID_IMediaSeeking"),
          Fails("IID_IBasicVideo", "IID_IBasicVideo"),
          Fails("IID_IVideoWindow", "IID_IVideoWindow"),
          Fails("SetTimeFormat", "SetTimeFormat"),
          Fails("GetDuration", "GetDuration"),
          {"GetVideoSize #1", kOpens, {}},
      },
      {[&] { Open(); },
       [&](const FaultRow& row) {
         FaultRow expected = row;
         if (row.outcome == kOpens) {
           EXPECT_EQ(filmShown, row.call != std::string("GetVideoSize #1"));
           expected.text = "some.avi";
         }
         Expect(expected, DeviceType::kFile, false);
       },
       [&] { Close(media, media.renderer); }});
  table.Run();
}

TEST_F(FileFaultTest, AnAnswerThatIsNoFailureIsToldAndTheFilePlays) {
  stores.Write("mfiles.abm", std::string("[Mine]\r\nTracks=1\r\n1=") + kPath + "\r\n");
  currentPlaylist = "Mine";
  NotedBoxes boxes;
  for (const char* call : {"RenderFile", "IID_IMediaControl", "IID_IMediaEventEx", "IID_IMediaSeeking",
                           "IID_IBasicVideo", "IID_IVideoWindow", "SetTimeFormat", "GetDuration"}) {
    SCOPED_TRACE(call);
    media.answers = {{call, S_FALSE}};
    EXPECT_TRUE(SwitchToFile());
    EXPECT_EQ(boxes.Take().size(), 1U);
    EXPECT_EQ(currentDevice->playState, PlayState::kPlaying);
    currentDevice->repeatMode = RepeatMode::kOne;
    media.events.push_back({EC_COMPLETE, 0});
    ::SendMessageA(mainWindow, kGraphMessage, 0, 0);
    media.events.clear();
    for (const int command : {kCommandPause, kCommandPlay, kCommandStop}) Press(command);
    currentDevice->FastForward();
    currentDevice->EndScan();
    Close(media, media.renderer);
  }
}

// The disc has one track, so that the drive's position alone decides whether it ends.
class CdFaultTest : public FaultTest<CdPanelTest> {
 protected:
  CdFaultTest() {
    stores.Write("quorvex.ini", "[CD]\r\nStopOnExit=1\r\n");
    drive.SetSpeed(101);  // without sound
  }

  static void Tick() { ::SendMessageA(mainWindow, WM_TIMER, kDeviceTimer, 0); }

  // Until the disc plays and its position was looked at twice.
  void Open() {
    stores.Write("cd.abm", "");
    drive.InsertImage(disc);
    Press(kCommandCd);
    Tick();
    Tick();
    const int before = drive.Position();
    PumpUntilMoved(before);
    Tick();
  }
  void PumpUntilMoved(int before) {
    const ULONGLONG end = ::GetTickCount64() + 200;
    while (drive.Position() == before && ::GetTickCount64() < end) ::Sleep(5);
  }

  bool Plays() {
    return ShownText() == "Track 01" && First() == 1 && Second() == 1 && IsLit(kCommandPlay) &&
           drive.State().transport == Transport::kPlaying && Shown(kMinutesUnits) == 0;
  }

  ComScript script;
  const std::string disc = drive.MakeDisc("disc", {300});
};

TEST_F(CdFaultTest, EveryCommandUntilADiscPlays) {
  MciCalls mci(script);
  char text[256] = "";
  ::mciGetErrorStringA(MciCalls::kAnswer, text, sizeof text);
  IniDocument store("");
  AddDisc(store, DiscIdentifier(std::vector{300}), 1, LoadText(IDS_TRACK));
  const std::string known = store.Text();
  const Boxes hardware{std::string("MCI Error: ") + text};
  FaultTable table(script, {{"time format", kOpens, hardware}, {"MCI_PLAY", kFails, hardware}},
                   {[&] { Open(); },
                    [&](const FaultRow& row) {
                      if (row.outcome == kFails) {
                        EXPECT_TRUE(Until([&] { return ShownText() == "Track 01" && !IsLit(kCommandPlay); }));
                        Press(kCommandPlay);
                      }
                      PumpFor(10);  // an error is told by a posted message
                      EXPECT_TRUE(Until([&] { return Plays(); })) << ShownText();
                      EXPECT_EQ(stores.Read("cd.abm"), known) << "another disc was registered";
                    },
                    [&] {
                      Press(kCommandCloseDevice);
                      ExpectIdle();
                      EXPECT_TRUE(mci.open.empty());
                    }});
  table.Run();
}

// These and what fails on the way to a card's captions, when it is opened and when its graph is built again.
std::vector<FaultRow> WithCaptions(std::vector<FaultRow> rows) {
  const char* const noCaptions = "This graph cannot CC!";
  for (const char* const call : {"EnumPins", "NextPin", "QueryPinInfo"})
    rows.push_back({call, kOpens, Box(noCaptions), "", false});
  for (const char* const call : {"Render line21.Out", "Connect card.VPVBI"})
    rows.push_back(Opens(call, noCaptions));
  return rows;
}

// The user confirms every recording.
class TvFaultTest : public FaultTest<TvTest> {
 protected:
  void OpenWithFile() { Open("[CAPTURE]\r\nCaptureFile=C:\\tape.avi\r\n"); }

 private:
  ImportHook<decltype(&::DialogBoxParamA)> confirmed{
      __imp_DialogBoxParamA, [](HINSTANCE, LPCSTR, HWND, DLGPROC, LPARAM) -> INT_PTR { return 1; }};
};

TEST_F(TvFaultTest, EveryCallOfOpeningACard) {
  const char* const noPicture = "The capture device has no picture";
  const char* const noRate = "The capture device does not take its format";
  stores.Write("quorvex.ini", "");
  FaultTable table(
      tv,
      WithCaptions({
          Fails("Create builder", "IID_ICaptureGraphBuilder"),
          Fails("Create list #1", "IID_ICreateDevEnum"),
          Fails("List video", "No video capture hardware was found"),
          Fails("NextEntry #1", "Capture device was not detected."),
          Fails("BindToObject #1", "Capture device was not detected."),
          Fails("Create graph", "Cannot instantiate filtergraph"),
          Fails("SetFiltergraph", "Cannot give graph to builder"),
          Fails("Add card", "Cannot add vidcap to filtergraph"),
          {"Find card IAMStreamConfig", kFails, Box("Cannot find VCapture:IAMStreamConfig"), noPicture},
          FailsSilently("GetFormat #1", noPicture),
          FailsSilently("Create list #2", "The platform lists no devices"),
          Opens("NextEntry #2", "Cannot create audio capture filter"),
          Opens("BindToObject #2", "Cannot create audio capture filter"),
          Fails("Add line", "Cannot add audcap to filtergraph"),
          Opens("Find line IAMStreamConfig", "Cannot find ACapture:IAMStreamConfig"),
          Opens("RenderStream", "This graph cannot preview!"),
          Fails("Find card IVideoWindow", "This graph cannot preview properly"),
          {"SetFormat", kOpens, Box("Error: Cannot set frame rate for preview"), noRate},
          {"GetFormat #2", kOpens, {}, noRate},
          Opens("BindToObject #3", "Cannot bind to object"),
          Opens("BindToObject #4", "Cannot bind to object"),
          Fails("IID_IMediaControl", "IID_IMediaControl"),
          Fails("IID_IBasicAudio", "IID_IBasicAudio"),
          Opens("put_InputType", "put_InputType"),
          {"put_Channel", kOpens, {}, "Cannot tune to channel 2"},
          {"Route", kOpens, {}, "Cannot switch to Tuner"},
      }),
      {[] { Press(kFirstCard); }, [](const FaultRow& row) { Expect(row, DeviceType::kTv); },
       [&] { Close(tv, tv.renderer); }});
  table.Run();
}

TEST_F(TvFaultTest, EveryCallFromTheRecordKeyToTheRecording) {
  FaultTable table(tv,
                   {
                       Fails("SetOutputFileName", "Cannot set capture file."),
                       Opens("SetMasterStream", "SetMasterStream failed!"),
                       Fails("Render card", "Cannot render video capture stream."),
                       Opens("RenderStream", "This graph cannot preview!"),
                       Fails("Render line", "Cannot render audio capture stream."),
                       Fails("Find card IVideoWindow", "This graph cannot preview properly."),
                       Opens("SetFormat", "Error: Cannot set frame rate for preview."),
                       Fails("IID_IMediaControl", "IID_IMediaControl"),
                       Opens("IID_IBasicAudio", "IID_IBasicAudio"),
                       Fails("Run", "Error 80004005: Cannot start graph"),
                   },
                   {[] { Press(kCommandRecord); },
                    [&](const FaultRow& row) {
                      ASSERT_NE(currentDevice, nullptr);
                      const bool records = row.outcome == kOpens;
                      EXPECT_EQ(currentDevice->recording, records);
                      EXPECT_EQ(IsLit(kCommandRecord), records);
                      EXPECT_EQ(Shown(kRecordLamp), records ? 1 : 0);
                      EXPECT_EQ(ShownText(), records ? "C:\\tape.avi" : "");
                      EXPECT_TRUE(records || tv.calls.back() == "Run") << "the preview is not back";
                      const bool written = tv.log.find("gone mux\n") != std::string::npos;
                      EXPECT_EQ(written, !records && row.call != std::string("SetOutputFileName"))
                          << "what would write is still in the graph";
                      Press(kCommandStop);
                      EXPECT_FALSE(currentDevice->recording);
                    },
                    [&] { Close(tv, tv.renderer); }, [&] { OpenWithFile(); }});
  table.codes = {E_FAIL};
  table.Run();
}

// The file is ended, the preview built again, and then everything is taken down.
TEST_F(TvFaultTest, EveryCallOfClosingACardThatRecords) {
  FaultTable table(
      tv,
      WithCaptions({
          Opens("Stop #1", "Stop"),
          Opens("RenderStream", "This graph cannot preview!"),
          Opens("Find card IVideoWindow", "This graph cannot preview properly"),
          Opens("SetFormat", "Error: Cannot set frame rate for preview"),
          Opens("BindToObject", "Cannot bind to object"),
          Opens("IID_IMediaControl", "IID_IMediaControl"),
          Opens("IID_IBasicAudio", "IID_IBasicAudio"),
      }),
      {[] { Press(kCommandCloseDevice); }, [&](const FaultRow&) { Close(tv, tv.renderer); }, [] {},
       [&] {
         OpenWithFile();
         Press(kCommandRecord);
         ASSERT_TRUE(currentDevice->recording);
       }});
  table.Run();
}

}  // namespace
}  // namespace quorvex
