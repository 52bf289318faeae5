// The CD device over the real MCI and the virtual drive.
#include "devices/cd/cd_device.h"

#include <thread>

#include "tests/support/cd_panel.h"
#include "tests/support/mci_calls.h"
#include "tests/support/noted_boxes.h"

namespace quorvex {
namespace {

class CdDeviceTest : public CdPanelTest {
 protected:
  static int Seconds() {
    return Shown(kMinutesTens) * 600 + Shown(kMinutesUnits) * 60 + Shown(kSecondsTens) * 10 +
           Shown(kSecondsUnits);
  }
};

TEST_F(CdDeviceTest, ScanningMovesTheDisplayAndThenTheDisc) {
  OpenWith({60, 245});
  Press(kCommandNext);
  EXPECT_TRUE(Until([&] { return drive.Position() >= 60 * 75; }));
  Press(kCommandPause);
  EXPECT_TRUE(Until([] { return State() == PlayState::kPaused; }));
  currentDevice->Rewind();
  EXPECT_EQ(Seconds(), 245) << "before its start lies the track's end";
  currentDevice->FastForward();
  EXPECT_EQ(Seconds(), 0);
  for (int i = 0; i < 30; ++i) currentDevice->FastForward();
  EXPECT_EQ(Seconds(), 30);
  EXPECT_LT(drive.Position(), 65 * 75) << "the disc stays where it is until the key is let go";
  currentDevice->EndScan();
  EXPECT_TRUE(
      Until([&] { return drive.State().transport == Transport::kPlaying && drive.Position() >= 90 * 75; }));
  EXPECT_LT(drive.Position(), 93 * 75);
  EXPECT_FALSE(currentDevice->scanning);
}

TEST_F(CdDeviceTest, ADiscThatEndsDuringAScanGoesOnWhereTheScanLed) {
  OpenWith({60, 9});
  Press(kCommandNext);
  EXPECT_TRUE(Until([&] { return drive.Position() >= 61 * 75; }));
  for (int i = 0; i < 5; ++i) currentDevice->FastForward();
  drive.SetSpeed(300);
  EXPECT_TRUE(Until([] { return State() == PlayState::kStopped; }));
  drive.SetSpeed(100);
  currentDevice->EndScan();
  EXPECT_TRUE(Until([] { return State() == PlayState::kPlaying && Seconds() >= 6; }));
  EXPECT_EQ(First(), 2);
}

TEST_F(CdDeviceTest, AScanThatADiscDoesNotSurviveEnds) {
  OpenWith({60});
  currentDevice->FastForward();
  drive.Eject();
  EXPECT_TRUE(Until([] { return Second() == 0; }));
  currentDevice->EndScan();
  PumpFor(300);
  EXPECT_TRUE(drive.State().trayOpen) << "letting go of the key must not close the tray";
}

TEST_F(CdDeviceTest, OnADriveThatCallsItselfStoppedWhilePausedStopEndsThePause) {
  ComScript script;
  MciCalls mci(script);
  mci.pausedIsStopped = true;
  OpenWith({60});
  Press(kCommandPause);
  EXPECT_TRUE(Until([] { return Shown(kPauseLamp) == 1 && IsLit(kCommandPause); }));
  Press(kCommandStop);
  EXPECT_TRUE(Until([] { return Shown(kPauseLamp) == 0 && !IsLit(kCommandPause); }));
}

TEST_F(CdDeviceTest, PlayClosesTheTray) {
  OpenWith({60});
  Press(kCommandEject);
  EXPECT_TRUE(Until([] { return ShownText() == "No disc loaded" && State() == PlayState::kStopped; }));
  Press(kCommandPlay);
  EXPECT_TRUE(Until([] { return Second() == 1 && State() == PlayState::kPlaying; }));
}

TEST_F(CdDeviceTest, ADataDiscIsNamedAndLeftAlone) {
  drive.InsertImage(drive.MakeDisc("data", {60, 60}, true));
  Press(kCommandCd);
  EXPECT_TRUE(Until([] { return ShownText() == "Non-AudioCD inserted"; }));
  for (const int command :
       {kCommandPlay, kCommandPause, kCommandStop, kCommandNext, kCommandPrevious, kCommandRandom})
    Press(command);
  currentDevice->FastForward();
  currentDevice->EndScan();
  PumpFor(400);
  EXPECT_EQ(drive.State().transport, Transport::kStopped);
  EXPECT_EQ(ShownText(), "Non-AudioCD inserted");
  EXPECT_FALSE(std::filesystem::exists(cdAlbumPath));
}

TEST_F(CdDeviceTest, ADiscExchangedBetweenPlayAndTheNextLookIsSeen) {
  OpenWith({60, 60}, "AutoPlay=0\r\n");
  Press(kCommandPlay);
  drive.InsertImage(drive.MakeDisc("data", {60}, true));
  EXPECT_TRUE(Until([] { return ShownText() == "Non-AudioCD inserted" && State() == PlayState::kStopped; }));
}

TEST_F(CdDeviceTest, TheDiscRunsOnThroughItsTracksAndEndsAtItsEnd) {
  OpenWith({3, 3, 3});
  drive.SetSpeed(300);
  EXPECT_TRUE(Until([] { return First() == 2 && ShownText() == "Track 02"; }));
  EXPECT_TRUE(Until([] { return First() == 3; }));
  EXPECT_TRUE(Until([] { return First() == 1 && State() == PlayState::kStopped; }));
  EXPECT_EQ(Seconds(), 0);
  EXPECT_EQ(drive.State().transport, Transport::kStopped);
}

TEST_F(CdDeviceTest, TheRepeatModeSaysWhatFollows) {
  const struct {
    const char* name;
    std::vector<int> seconds;
    int track;  // that plays to its end
    int presses;
    int follows;
  } cases[] = {{"one, within the disc", {3, 60}, 1, 1, 1},
               {"one, at the end of the disc", {60, 3}, 2, 1, 2},
               {"all", {60, 3}, 2, 2, 1}};
  for (const auto& [name, seconds, track, presses, follows] : cases) {
    SCOPED_TRACE(name);
    OpenWith(seconds);
    if (track == 2) Press(kCommandNext);
    for (int i = 0; i < presses; ++i) Press(kCommandRepeat);
    EXPECT_TRUE(Until([&] { return (drive.Position() >= seconds[0] * 75) == (track == 2); }));
    drive.SetSpeed(200);
    const std::uint32_t serial = drive.State().playSerial;
    EXPECT_TRUE(Until([&] {
      return drive.State().playSerial != serial && drive.State().transport == Transport::kPlaying;
    })) << "what is to follow is played";
    EXPECT_TRUE(
        Until([&] { return First() == follows && (drive.Position() >= seconds[0] * 75) == (follows == 2); }));
    drive.SetSpeed(100);
    Press(kCommandCloseDevice);
  }
}

TEST_F(CdDeviceTest, AStoredPlaylistDecidesStartStepsAndEnd) {
  const std::vector seconds{30, 3, 30, 3, 30};
  StorePlaylist(seconds, "4 2");
  OpenWith(seconds, "UsePlayList=1\r\n");
  EXPECT_EQ(First(), 4);
  drive.SetSpeed(200);
  EXPECT_TRUE(Until([&] { return First() == 5; }))
      << "between the entries tracks follow in disc order, and are shown";
  EXPECT_EQ(ShownText(), "Track 05");
  EXPECT_EQ(currentDevice->orderIndex, 0) << "on the entry last played";
  drive.SetSpeed(100);
  currentDevice->repeatMode = RepeatMode::kOne;
  EXPECT_TRUE(Until([&] { return First() == 4; })) << "the entry is played again";
  currentDevice->repeatMode = RepeatMode::kOff;
  drive.SetSpeed(200);
  EXPECT_TRUE(Until([&] { return First() == 5; }));
  drive.SetSpeed(100);
  Press(kCommandStop);
  EXPECT_EQ(First(), 4) << "where the drive stands";
  EXPECT_EQ(ShownText(), "Track 04");
  drive.SetSpeed(200);
  Press(kCommandNext);
  EXPECT_EQ(First(), 2);
  EXPECT_TRUE(Until([] { return State() == PlayState::kStopped; })) << "behind the last entry it ends";
  EXPECT_EQ(First(), 2);
}

TEST_F(CdDeviceTest, RandomPlayPermutesAndLeavingItKeepsTheTrack) {
  OpenWith({30, 30, 30, 30, 30, 30, 30, 30});
  Press(kCommandNext);
  Press(kCommandRandom);
  EXPECT_EQ(currentDevice->orderIndex, 0);
  EXPECT_EQ(First(), currentDevice->CurrentEntry());
  std::vector<int> order(currentDevice->playOrder.begin(), currentDevice->playOrder.begin() + 8);
  std::sort(order.begin(), order.end());
  EXPECT_EQ(order, (std::vector{1, 2, 3, 4, 5, 6, 7, 8}));
  EXPECT_TRUE(Until([&] { return drive.State().transport == Transport::kPlaying; }));
  const int playing = First();
  const std::uint32_t serial = drive.State().playSerial;
  Press(kCommandRandom);
  EXPECT_EQ(currentDevice->orderIndex, playing - 1);
  EXPECT_EQ(drive.State().playSerial, serial) << "playing goes on undisturbed";
}

TEST_F(CdDeviceTest, WithoutAutoPlayADiscWaits) {
  OpenWith({30, 30}, "AutoPlay=0\r\n");
  PumpFor(500);
  EXPECT_EQ(drive.State().transport, Transport::kStopped);
  EXPECT_EQ(ShownText(), "Track 01");
  EXPECT_EQ(First(), 1);
}

// As the settings are applied while a disc plays: a track of the new order plays on without a gap, with
// another the new order begins.
TEST_F(CdDeviceTest, ANewOrderLeavesATrackOfItPlaying) {
  const std::vector seconds{30, 30, 30};
  StorePlaylist(seconds, "3 2 2 1");
  OpenWith(seconds);
  Press(kCommandNext);
  EXPECT_TRUE(Until([&] { return drive.Position() >= 30 * 75; }));
  struct Case {
    const char* config;
    const char* playlist;
    std::vector<int> order;
    int index;
    int entry;
    bool playsOn;
  };
  const Case cases[] = {{"UsePlayList=1", "3 2 2 1", {3, 2, 2, 1}, 1, 2, true},
                        {"UsePlayList=0", "3 2 2 1", {1, 2, 3}, 1, 2, true},
                        {"UsePlayList=1", "2", {2}, 0, 2, true},
                        {"UsePlayList=1", "", {1, 2, 3}, 1, 2, true},
                        {"UsePlayList=1\r\nAutoPlay=0", "1 2", {1, 2}, 1, 2, true},
                        {"UsePlayList=1", "3 1", {3, 1}, 0, 3, false}};
  for (const Case& test : cases) {
    stores.Write("quorvex.ini", std::string("[CD]\r\n") + test.config + "\r\n");
    StorePlaylist(seconds, test.playlist);
    const std::uint32_t serial = drive.State().playSerial;
    const int position = drive.Position();
    currentDevice->LoadSettings();
    currentDevice->BuildPlayOrder();
    currentDevice->ApplyPlayOrder();
    const auto* const begin = currentDevice->playOrder.begin();
    EXPECT_EQ(std::vector<int>(begin, begin + currentDevice->orderLength), test.order) << test.playlist;
    EXPECT_EQ(currentDevice->orderIndex, test.index) << test.playlist;
    EXPECT_EQ(First(), test.entry);
    EXPECT_EQ(drive.State().playSerial == serial, test.playsOn) << test.playlist;
    PumpFor(500);  // nor does the device's own polling begin anew
    EXPECT_EQ(drive.State().playSerial == serial, test.playsOn) << test.playlist;
    EXPECT_EQ(drive.State().transport, Transport::kPlaying);
    EXPECT_GT(drive.Position(), position);
  }
}

TEST_F(CdDeviceTest, WithTheTrayOpenANewOrderWaitsForADisc) {
  OpenWith({30, 30});
  drive.Eject();
  EXPECT_TRUE(Until([] { return ShownText() == "No disc loaded"; }));
  currentDevice->BuildPlayOrder();
  currentDevice->ApplyPlayOrder();
  PumpFor(500);
  EXPECT_TRUE(drive.State().trayOpen);
  EXPECT_EQ(ShownText(), "No disc loaded");
  EXPECT_EQ(First(), 0);
}

TEST_F(CdDeviceTest, ClosedTheDiscPlaysOnUnlessItShallStop) {
  OpenWith({30});
  Press(kCommandCloseDevice);
  EXPECT_EQ(drive.State().transport, Transport::kPlaying);
  stores.Write("quorvex.ini", "[CD]\r\nStopOnExit=1\r\n");
  const std::uint32_t serial = drive.State().playSerial;
  Press(kCommandCd);
  EXPECT_TRUE(Until([] { return Second() == 1 && State() == PlayState::kPlaying; }));
  EXPECT_EQ(drive.State().playSerial, serial) << "what already plays is taken over";
  Press(kCommandCloseDevice);
  EXPECT_EQ(drive.State().transport, Transport::kStopped);
}

TEST_F(CdDeviceTest, TheDeviceMayGoWhileItsErrorIsShown) {
  OpenWith({30});
  Press(kCommandStop);
  drive.Set(&DriveState::failNextPlay, MCIERR_HARDWARE);
  Press(kCommandPlay);
  Press(kCommandCloseDevice);
  NotedBoxes boxes;
  EXPECT_TRUE(Until([&] { return !boxes.Take().empty(); }));
  EXPECT_EQ(currentDevice, nullptr);
}

TEST_F(CdDeviceTest, ADriveThatCannotBeOpenedOrIsNotReadyIsWaitedFor) {
  drive.Set(&DriveState::failOpens, 8);
  drive.Set(&DriveState::notReadyPolls, 4);
  drive.Insert({30});
  Press(kCommandCd);
  for (const char* const text : {"Initializing CD...", "Not Ready", "Track 01"})
    EXPECT_TRUE(Until([=] { return ShownText() == text; })) << text;
  EXPECT_EQ(Second(), 1);
}

TEST_F(CdDeviceTest, ADriveThatAnswersLateIsWaitedForAndOneThatNeverDoesIsLeft) {
  drive.Set(&DriveState::answerMs, 400);
  drive.Insert({60});
  Press(kCommandCd);
  EXPECT_TRUE(PumpUntil([] { return Second() == 1 && State() == PlayState::kPlaying; }, 30000));
  constexpr std::uint32_t kNever = 0xFFFFFFFF;
  drive.Set(&DriveState::answerMs, kNever);
  std::thread user([] {
    ::Sleep(1000);
    ::PostMessageA(mainWindow, WM_COMMAND, kCommandCloseDevice, 0);
  });
  // Shorter than what a question takes that nobody breaks off.
  EXPECT_TRUE(PumpUntil([] { return currentDevice == nullptr; }, 9000));
  user.join();
  drive.Set(&DriveState::answerMs, 0);
  Press(kCommandCd);
  EXPECT_TRUE(Until([] { return Second() == 1 && ShownText() == "Track 01"; }));
}

TEST_F(CdDeviceTest, DiscsOfEverySize) {
  OpenWith({2});
  Press(kCommandRandom);
  EXPECT_EQ(First(), 1);
  Press(kCommandRandom);
  drive.Insert({5, 0, 0, 5});
  EXPECT_TRUE(Until([] { return Second() == 4; }));
  Press(kCommandNext);
  currentDevice->FastForward();
  currentDevice->EndScan();
  drive.Insert({5, 5, 5});
  drive.Set(&DriveState::claimTracks, 1000);
  EXPECT_TRUE(Until([] { return currentDevice->itemCount == 1000; }));
  EXPECT_EQ(Second(), 0) << "the display holds three digits";
  drive.Set(&DriveState::claimTracks, 3'000'000'000U);
  drive.Insert({5, 6});
  PumpFor(600);
  EXPECT_EQ(currentDevice->itemCount, 1000);
}

TEST_F(CdDeviceTest, AStoreThatCannotBeReadIsToldAndLeftAlone) {
  const std::string before = "[CD List]\r\nNumber of CDs=0\r\n";
  stores.Write("cd.abm", before);
  {
    const UniqueHandle held =
        OwnFile(::CreateFileA(cdAlbumPath.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    OpenWith({40});
    EXPECT_EQ(ShownText(), "Cannot read cd.abm");
  }
  EXPECT_EQ(stores.Read("cd.abm"), before);
}

}  // namespace
}  // namespace quorvex
