#include "tests/support/panel.h"
#include "tests/support/recording_device.h"

namespace quorvex {
namespace {

class ButtonBehaviourTest : public PanelTest {
 protected:
  void Use(DeviceType type) {
    currentDevice = std::make_unique<RecordingDevice>(type, log);
    currentDeviceType = type;
  }
  void Down(int command) { ::SendMessageA(Button(command), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5)); }
  void Up(int command, int x = 5, int y = 5) {
    ::SendMessageA(Button(command), WM_LBUTTONUP, 0, MAKELPARAM(x, y));
  }
  void Move(int command, int x, int y) {
    ::SendMessageA(Button(command), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(x, y));
  }

  [[nodiscard]] long Times(const std::string& what) const {
    long count = 0;
    for (std::size_t at = log.find(what + '\n'); at != std::string::npos; at = log.find(what + '\n', at + 1))
      ++count;
    return count;
  }
};

TEST_F(ButtonBehaviourTest, AHeldScanKeyScansAfterHalfASecondTwentyTimesASecond) {
  Use(DeviceType::kCd);
  Down(kCommandFastForward);
  PumpFor(400);
  EXPECT_EQ(log, "") << "nothing in the first half second";
  PumpFor(1100);
  EXPECT_GE(Times("FastForward"), 10);
  EXPECT_LE(Times("FastForward"), 24);
  EXPECT_EQ(Times("EndScan"), 0);
  log.clear();
  Up(kCommandFastForward);
  PumpFor(300);
  EXPECT_EQ(log, "EndScan\n");
}

TEST_F(ButtonBehaviourTest, AShortClickOnAScanKeyOnlyEndsTheScan) {
  Use(DeviceType::kFile);
  Down(kCommandRewind);
  Up(kCommandRewind);
  PumpFor(700);
  EXPECT_EQ(log, "EndScan\n");
}

TEST_F(ButtonBehaviourTest, OnADvdTheScanKeysActOnceWhenLetGo) {
  Use(DeviceType::kDvd);
  Down(kCommandFastForward);
  PumpFor(700);
  EXPECT_EQ(log, "");
  Up(kCommandFastForward);
  Down(kCommandRewind);
  Up(kCommandRewind);
  EXPECT_EQ(log, "FastForward\nRewind\n");
}

TEST_F(ButtonBehaviourTest, ATvDeviceIsNotScannedButToldTheEnd) {
  Use(DeviceType::kTv);
  Down(kCommandFastForward);
  PumpFor(700);
  EXPECT_EQ(log, "");
  Up(kCommandFastForward);
  EXPECT_EQ(log, "EndScan\n");
}

TEST_F(ButtonBehaviourTest, AHeldArrowRepeatsAndItsClickCountsOnceMore) {
  Use(DeviceType::kTv);
  Down(kCommandUp);
  PumpFor(1050);
  const long repeated = Times("Up");
  EXPECT_GE(repeated, 3);
  EXPECT_LE(repeated, 7);
  Up(kCommandUp);
  EXPECT_TRUE(PumpUntil([&] { return Times("Up") == repeated + 1; }));
  PumpFor(300);
  EXPECT_EQ(Times("Up"), repeated + 1);
}

TEST_F(ButtonBehaviourTest, DraggedOffAKeyTheRepeatRests) {
  Use(DeviceType::kTv);
  Down(kCommandDown);
  PumpFor(750);
  EXPECT_GE(Times("Down"), 1);
  Move(kCommandDown, -5, 5);
  const long resting = Times("Down");
  PumpFor(400);
  EXPECT_EQ(Times("Down"), resting);
  Move(kCommandDown, 5, 5);
  EXPECT_TRUE(PumpUntil([&] { return Times("Down") > resting; }));
  Up(kCommandDown, -5, 5);
  log.clear();
  PumpFor(300);
  EXPECT_EQ(log, "") << "let go outside, it does not click";
}

// A menu or a box takes the mouse away: the scan must not go on, nor stay begun.
TEST_F(ButtonBehaviourTest, ATakenMouseEndsTheScan) {
  Use(DeviceType::kCd);
  for (const UINT message : {WM_CANCELMODE, WM_CAPTURECHANGED}) {
    Down(kCommandFastForward);
    EXPECT_TRUE(PumpUntil([&] { return Times("FastForward") > 0; }));
    ::SendMessageA(Button(kCommandFastForward), message, 0, 0);
    EXPECT_EQ(Times("EndScan"), 1);
    log.clear();
    PumpFor(300);
    EXPECT_EQ(log, "");
  }
}

TEST_F(ButtonBehaviourTest, WithoutADeviceAHeldKeyDoesNothing) {
  Down(kCommandFastForward);
  PumpFor(700);
  Up(kCommandFastForward);
  Down(kCommandUp);
  PumpFor(700);
  Up(kCommandUp);
  EXPECT_EQ(log, "");
}

}  // namespace
}  // namespace quorvex
