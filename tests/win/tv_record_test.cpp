// Recording with a scripted card: how the graph is built and taken down, what is asked and told, and how it
// ends.
#include <evcode.h>

#include "tests/support/dialog_user.h"
#include "tests/support/pump.h"
#include "tests/support/tv_panel.h"

namespace quorvex {
namespace {

constexpr char kReady[] = "Ready to Record";

class TvRecordTest : public TvTest {
 protected:
  // Opens a card whose capture file is set already.
  void OpenWithFile(const std::string& options = "") {
    Open("[CAPTURE]\r\nCaptureFile=C:\\tape.avi\r\n" + options);
  }

  // Presses Record and confirms; answers what the graph was asked.
  std::string RecordOf(int answer = IDOK) {
    tv.Take();
    const DialogScript script({DialogScript::Press(kReady, answer)});
    Press(kCommandRecord);
    return tv.Take();
  }

  static bool IsRecording() {
    EXPECT_EQ(IsLit(kCommandRecord), currentDevice->recording);
    EXPECT_EQ(Shown(kRecordLamp), currentDevice->recording ? 1 : 0);
    return currentDevice->recording;
  }

  void Tell(long code, LONG_PTR first, LONG_PTR second = 0) {
    tv.events.push_back({code, first, second});
    ::SendMessageA(mainWindow, kGraphMessage, 0, 0);
    EXPECT_EQ(tv.unfreedEvents, 0);
  }

  // What is left of calls from a line on.
  static std::string From(const std::string& calls, const std::string& line) {
    const std::size_t at = calls.find(line);
    return at == std::string::npos ? "nothing of " + line + " in " + calls : calls.substr(at);
  }
};

TEST_F(TvRecordTest, BuildsItsGraphAndGoesBackToThePreview) {
  OpenWithFile();
  const std::string calls = RecordOf();
  EXPECT_EQ(calls.substr(0, 5), "Stop\n");
  EXPECT_EQ(From(calls, "SetOutputFileName"),
            "SetOutputFileName C:\\tape.avi\nSetOutputCompatibilityIndex 1\nSetMasterStream -1\n"
            "Render card capture into mux\nRenderStream preview\nRender line capture into mux\n"
            "Find card IVideoWindow preview\nSetFormat 666666\n"
            "Control preview now to never\nControl capture never to now\nRun\n"
            "Control capture now to never\n");
  EXPECT_TRUE(IsRecording());
  EXPECT_EQ(ShownText(), "C:\\tape.avi");
  EXPECT_EQ(LogOf(kCommandRecord), "") << "it does already";
  EXPECT_EQ(LogOf(kCommandPause), "Control capture never to now\n");
  EXPECT_TRUE(IsRecording()) << "only Stop ends it";
  const std::string end = LogOf(kCommandStop);
  EXPECT_EQ(end.substr(0, 5), "Stop\n");
  EXPECT_LT(end.find("Remove mux\n"), end.find("RenderStream preview\n"));
  EXPECT_LT(end.find("gone mux\n"), end.find("RenderStream preview\n"));
  EXPECT_EQ(end.substr(end.rfind('\n', end.size() - 2) + 1), "Run\n");
  EXPECT_FALSE(IsRecording());
  EXPECT_EQ(ShownText(), "");
  EXPECT_EQ(LogOf(kCommandStop), "") << "there is nothing to stop";
  EXPECT_EQ(LogOf(kCommandPause), "") << "nor to hold";
}

TEST_F(TvRecordTest, TheOptionsAreThoseOfTheSettings) {
  struct Case {
    const char* options;
    const char* calls;
  };
  const Case cases[] = {
      {"CaptureAudio=0\r\nMasterStream=1\r\nUseFrameRate=0\r\n",
       "SetOutputCompatibilityIndex 1\nRender card capture into mux\nRenderStream preview\n"
       "Find card IVideoWindow preview\nControl preview"},
      {"MasterStream=1\r\nFrameRate=333667\r\n",
       "SetOutputCompatibilityIndex 1\nSetMasterStream 1\nRender card capture into mux\nRenderStream "
       "preview\n"
       "Render line capture into mux\nFind card IVideoWindow preview\nSetFormat 333667\nControl preview"}};
  for (const Case& one : cases) {
    OpenWithFile(one.options);
    EXPECT_EQ(From(RecordOf(), "SetOutputCompatibilityIndex").substr(0, std::string(one.calls).size()),
              one.calls);
    Press(kCommandCloseDevice);
  }
}

TEST_F(TvRecordTest, ACardThatTakesNoOrdersForItsStreamsIsPausedUntilTheConfirmation) {
  OpenWithFile();
  tv.answers = {{"Control preview", E_NOTIMPL}};
  EXPECT_EQ(From(RecordOf(), "Control"), "Control preview now to never\nPause\nRun\n");
  Press(kCommandStop);
  // One that then does not run.
  tv.Take();
  {
    const DialogScript script({{kReady,
                                [this](HWND dialog) {
                                  tv.answers["Run"] = HRESULT_FROM_WIN32(ERROR_GEN_FAILURE);
                                  ::PostMessageA(dialog, WM_COMMAND, IDOK, 0);
                                }},
                               {"Quorvex", [this](HWND box) {
                                  tv.answers.erase("Run");
                                  EXPECT_EQ(DialogScript::TextOf(box, 0xFFFF),
                                            "Error 8007001f: Cannot run graph");
                                  ::PostMessageA(box, WM_COMMAND, IDOK, 0);
                                }}});
    Press(kCommandRecord);
  }
  EXPECT_FALSE(IsRecording());
  tv.answers["Pause"] = E_UNEXPECTED;
  const DialogScript script({DialogScript::Box("Error 8000ffff: Cannot start graph")});
  Press(kCommandRecord);
  EXPECT_FALSE(IsRecording());
}

TEST_F(TvRecordTest, TheConfirmationComesWhereAMinimisedPanelWas) {
  OpenWithFile();
  RECT panel{};
  ::GetWindowRect(mainWindow, &panel);
  ::ShowWindow(mainWindow, SW_MINIMIZE);
  const DialogScript script({{kReady, [&](HWND dialog) {
                                RECT place{};
                                ::GetWindowRect(dialog, &place);
                                EXPECT_NEAR(place.left + place.right, panel.left + panel.right, 1);
                                EXPECT_NEAR(place.top + place.bottom, panel.top + panel.bottom, 1);
                                ::PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
                              }}});
  Press(kCommandRecord);
}

TEST_F(TvRecordTest, WithoutTheVideoWindowThePreviewHasNoWindowOfItsOwn) {
  OpenWithFile();
  DeleteVideoWindow();
  for (const auto& act :
       {std::function([this] { RecordOf(); }), std::function([] { Press(kCommandStop); })}) {
    tv.renderer.autoShow = true;
    act();
    EXPECT_FALSE(tv.renderer.autoShow);
  }
}

TEST_F(TvRecordTest, CancelAtTheConfirmationGoesBackToThePreview) {
  OpenWithFile();
  Device().capture.promptToSave = true;
  {
    const DialogScript script(
        {DialogScript::Press(kReady, IDCANCEL), DialogScript::Press("Set Capture File", IDCANCEL)});
    Press(kCommandRecord);
  }
  EXPECT_FALSE(IsRecording());
  const std::string calls = tv.Take();
  EXPECT_EQ(calls.find("Control capture now"), std::string::npos) << "nothing was captured";
  EXPECT_LT(calls.find("Run\nStop\n"), calls.rfind("RenderStream preview\n"));
  EXPECT_EQ(calls.substr(calls.size() - 4), "Run\n");
}

TEST_F(TvRecordTest, ACardThatGoesDuringTheConfirmationIsNotRecordedFrom) {
  OpenWithFile();
  const DialogScript script({{kReady, [this](HWND dialog) {
                                tv.events.push_back({EC_DEVICE_LOST, 0, 0});
                                ::SendMessageA(mainWindow, kGraphMessage, 0, 0);
                                ::PostMessageA(dialog, WM_COMMAND, IDOK, 0);
                              }}});
  Press(kCommandRecord);
  EXPECT_FALSE(IsRecording());
  EXPECT_EQ(ShownText(), "The capture device is gone");
  EXPECT_EQ(theVideoWindow, nullptr);
  EXPECT_NE(tv.Take().find("gone mux\n"), std::string::npos) << "what would write is still in the graph";
}

TEST_F(TvRecordTest, SoundThatIsNotThereIsNotRecorded) {
  tv.AudioDevices().entries.clear();
  OpenWithFile("CaptureAudio=1\r\n");
  EXPECT_EQ(RecordOf().find("Render line"), std::string::npos) << "there is no sound input";
  EXPECT_TRUE(IsRecording());
  Press(kCommandStop);
  Device().capture.audio = true;
  Press(kCommandRecord);
  EXPECT_FALSE(IsRecording());
  EXPECT_EQ(ShownText(), "There is no sound input to record from");
}

TEST_F(TvRecordTest, TheTimeRunsAndTheLimitEndsIt) {
  OpenWithFile("EnableTimeLimit=1\r\nTimeLimit=1\r\n");
  RecordOf();
  EXPECT_TRUE(PumpUntil([] { return !currentDevice->recording; }));
  EXPECT_FALSE(IsRecording());
  EXPECT_EQ(Shown(kSecondsUnits), 1) << "the digits keep the last time";
  // The longest limit there is does not end it at once.
  Device().capture.timeLimitSeconds = 4294967295U;
  RecordOf();
  EXPECT_TRUE(PumpUntil([] { return Shown(kSecondsUnits) == 2; }));
  EXPECT_TRUE(IsRecording());
}

TEST_F(TvRecordTest, AGraphThatDoesNotStopIsStillRecording) {
  OpenWithFile();
  RecordOf();
  tv.answers["Stop"] = S_FALSE;
  {
    const DialogScript script({DialogScript::Box("Stop")});
    Press(kCommandStop);
  }
  EXPECT_TRUE(IsRecording());
  tv.answers.clear();
  Press(kCommandStop);
  EXPECT_FALSE(IsRecording());
}

TEST_F(TvRecordTest, WhatEndsItBesidesTheUserIsToldOnTheTextLine) {
  OpenWithFile();
  struct Case {
    long code;
    LONG_PTR first;
    const char* text;
  };
  const Case cases[] = {
      {EC_ERRORABORT, HRESULT_FROM_WIN32(ERROR_DISK_FULL), "Recording stopped: the disk is full"},
      {EC_STREAM_ERROR_STOPPED, HRESULT_FROM_WIN32(ERROR_DISK_FULL), "Recording stopped: the disk is full"},
      {EC_ERRORABORT, STG_E_MEDIUMFULL, "Recording stopped: the disk is full"},
      {EC_ERRORABORT, E_ACCESSDENIED, "Recording stopped: cannot write the file"}};
  for (const Case& one : cases) {
    RecordOf();
    EXPECT_TRUE(IsRecording());
    Tell(EC_CLOCK_CHANGED, 0);
    EXPECT_TRUE(IsRecording());
    Tell(one.code, one.first);
    EXPECT_FALSE(IsRecording());
    EXPECT_EQ(ShownText(), one.text);
    EXPECT_EQ(tv.log.substr(tv.log.size() - 4), "Run\n") << "the preview is back";
  }
  RecordOf();
  tv.Take();
  Tell(EC_DEVICE_LOST, 0);
  EXPECT_FALSE(IsRecording());
  EXPECT_EQ(ShownText(), "The capture device is gone");
  EXPECT_NE(tv.Take().find("gone mux\n"), std::string::npos) << "the file is finished";
}

TEST_F(TvRecordTest, TheStoreKnowsTheFileBeforeItIsWritten) {
  Open();
  Device().capture.file = "C:\\new tape.avi";
  RecordOf();
  EXPECT_EQ(Stored("CaptureFile"), "C:\\new tape.avi");
}

TEST_F(TvRecordTest, TheEndOfTheSessionStoresTheOptionsAndFinishesTheFile) {
  OpenWithFile("PromptToSave=1\r\n");
  RecordOf();
  stores.Write("quorvex.ini", "");
  ::SendMessageA(mainWindow, WM_ENDSESSION, FALSE, 0);
  EXPECT_TRUE(IsRecording()) << "the session goes on: somebody refused";
  ::SendMessageA(mainWindow, WM_ENDSESSION, TRUE, 0);
  EXPECT_EQ(Stored("LastDevice"), "1");
  EXPECT_EQ(Stored("CaptureFile"), "C:\\tape.avi");
  EXPECT_NE(Stored("AntennaChannelList"), "missing");
  EXPECT_FALSE(IsRecording());
  EXPECT_NE(tv.Take().find("gone mux\n"), std::string::npos) << "the file is not finished";
  sessionEnds = false;
  Device().capture.promptToSave = false;
}

TEST_F(TvRecordTest, TheFormatOfTheSoundIsChosenInThePlatformsDialog) {
  constexpr char kSound[] = "Sound Selection";
  constexpr int kFormats = 102;
  OpenWithFile();
  ASSERT_TRUE(Device().HasAudioFormat());
  const auto choose = [this](DialogScript::Step step) {
    tv.Take();
    const DialogScript script({std::move(step)});
    Device().ChooseAudioFormat(mainWindow);
    return tv.Take();
  };
  EXPECT_EQ(choose(DialogScript::Press(kSound, IDCANCEL)), "");
  EXPECT_EQ(choose(DialogScript::Press(kSound, IDOK)), "Stop\nSetSoundFormat 44100 2\nRun\n");
  const auto chooseFirst = [](HWND dialog) {
    const HWND formats = ::GetDlgItem(dialog, kFormats);
    ::SendMessageA(formats, CB_SETCURSEL, 0, 0);
    ::SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(kFormats, CBN_SELCHANGE),
                   reinterpret_cast<LPARAM>(formats));
    ::PostMessageA(dialog, WM_COMMAND, IDOK, 0);
  };
  EXPECT_EQ(choose({kSound, chooseFirst}), "Stop\nSetSoundFormat 8000 1\nRun\n");
  tv.answers["SetSoundFormat"] = E_FAIL;
  EXPECT_EQ(choose(DialogScript::Press(kSound, IDOK)), "Stop\nSetSoundFormat 44100 2\nRun\n");
  EXPECT_EQ(ShownText(), "The sound input does not take this format");
  tv.answers["GetSoundFormat"] = E_FAIL;
  Device().ChooseAudioFormat(mainWindow);
  EXPECT_EQ(tv.Take(), "");
}

TEST_F(TvRecordTest, ARecordingThatWasCutOffIsFinishedAtTheNextStart) {
  struct Case {
    HRESULT answer;
    LONGLONG recovered;
    const char* text;
  };
  const Case cases[] = {{S_OK, 36'610'000'000 + 5'000'000, "Recovered 01:01:01"},
                        {S_OK, 0, ""},
                        {S_FALSE, 0, ""},
                        {HRESULT_FROM_WIN32(ERROR_WRITE_PROTECT), 0, "Cannot recover the recording"}};
  for (const Case& one : cases) {
    tv.answers = {{"Recover", one.answer}};
    tv.recovered = one.recovered;
    OpenWithFile();
    EXPECT_EQ(ShownText(), one.text);
    Press(kCommandCloseDevice);
  }
  tv.answers = {{"ICaptureRecovery", E_NOINTERFACE}};
  OpenWithFile();
  EXPECT_EQ(ShownText(), "") << "the platform's own builder cannot";
}

}  // namespace
}  // namespace quorvex
