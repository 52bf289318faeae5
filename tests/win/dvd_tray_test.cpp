// The DVD device and the drive's tray, over the real MCI and the virtual drive.
#include <evcode.h>

#include "tests/support/dvd_panel.h"
#include "tests/support/noted_boxes.h"
#include "tests/support/virtual_drive.h"

namespace quorvex {
namespace {

class DvdTrayTest : public DvdTest {
 protected:
  bool TrayOpen() { return drive.State().trayOpen; }

  VirtualDrive drive;
};

TEST_F(DvdTrayTest, EjectOpensTheTrayAndOnceMoreClosesIt) {
  drive.Insert({60});
  Press(kCommandDvd);
  Happens(EC_DVD_TITLE_CHANGE, 1);
  Press(kCommandPause);
  EXPECT_GT(currentDevice->itemCount, 0);
  for (const bool open : {true, false}) {
    Press(kCommandEject);
    EXPECT_EQ(currentDevice->itemCount, 0) << "the chapters went with the disc";
    EXPECT_EQ(TrayOpen(), open);
    EXPECT_EQ(Shown(kPauseLamp), 0);
    EXPECT_EQ(currentDevice->playState, PlayState::kStopped);
    EXPECT_EQ(dvd.alive, 0);
  }
}

TEST_F(DvdTrayTest, ADiscThatIsTakenOutFromOutsideIsLetGoAndTheTrayIsLeftAlone) {
  drive.Insert({60});
  for (const bool paused : {false, true}) {
    Press(kCommandDvd);
    Happens(EC_DVD_TITLE_CHANGE, 1);
    Happens(EC_DVD_CHAPTER_START, 2);
    EnterMenu();
    if (paused) Press(kCommandPause);
    dvd.Take();
    // What else the navigator tells then finds no graph any more.
    dvd.events = {{EC_DVD_DISC_EJECTED, 0}, {EC_DVD_CHAPTER_START, 7}};
    Happens(EC_COMPLETE);
    EXPECT_EQ(
        dvd.Take(),
        "SetNotifyWindow none 1037 0\ngone graph\ngone info\ngone control\ngone captions\ngone builder\n");
    EXPECT_FALSE(TrayOpen());
    ASSERT_NE(currentDevice, nullptr);
    EXPECT_EQ(theVideoWindow, nullptr);
    EXPECT_EQ(currentDevice->playState, PlayState::kStopped);
    EXPECT_FALSE(IsLit(kCommandPlay));
    EXPECT_EQ(Shown(kPauseLamp) + Shown(kMenuLamp) + Shown(kChapterLabel) + Shown(kOfLabel), 0);
    dvd.events.clear();
    for (const int command : {kCommandNext, kCommandFastForward, kCommandUp, kCommandStop, kCommandPause})
      Press(command);
    EXPECT_EQ(dvd.Take(), "");
    Press(kCommandPlay);
    EXPECT_EQ(dvd.Take().substr(0, 16), "Create\nRender 1\n");
    EXPECT_EQ(currentDevice->playState, PlayState::kPlaying);
  }
}

TEST_F(DvdTrayTest, APlayThatCannotOpenTheDiscLeavesNoDevice) {
  Press(kCommandDvd);
  Press(kCommandEject);
  NotedBoxes boxes;
  dvd.answers["Render"] = E_FAIL;
  Press(kCommandPlay);
  EXPECT_EQ(boxes.Take().size(), 2U);
  EXPECT_EQ(currentDevice, nullptr);
  EXPECT_EQ(Shown(kIdleLamp), 1);
  EXPECT_FALSE(IsLit(kCommandPlay));
}

TEST_F(DvdTrayTest, WithoutADriveEjectOnlyClosesTheDisc) {
  // The platform opens a drive by its type once in a process.
  MCI_OPEN_PARMSA held{};
  held.lpstrDeviceType = reinterpret_cast<LPSTR>(static_cast<ULONG_PTR>(MCI_DEVTYPE_CD_AUDIO));
  ASSERT_EQ(::mciSendCommandA(0, MCI_OPEN, MCI_OPEN_TYPE | MCI_OPEN_TYPE_ID | MCI_OPEN_SHAREABLE,
                              reinterpret_cast<DWORD_PTR>(&held)),
            0U);
  Press(kCommandDvd);
  for (int time = 0; time < 2; ++time) {
    Press(kCommandEject);
    EXPECT_EQ(dvd.alive, 0);
    EXPECT_FALSE(TrayOpen());
  }
  Press(kCommandPlay);
  EXPECT_EQ(currentDevice->playState, PlayState::kPlaying);
  ::mciSendCommandA(held.wDeviceID, MCI_CLOSE, 0, 0);
}

}  // namespace
}  // namespace quorvex
