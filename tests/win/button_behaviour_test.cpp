#include <array>
#include <vector>

#include "shell/key_focus.h"
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

TEST_F(ButtonBehaviourTest, WhatAScanKeyDoesIsTheDevicesKind) {
  const struct {
    DeviceType type;
    int heldMs;
    const char* whenLetGo;
  } cases[] = {{DeviceType::kFile, 0, "EndScan\n"},
               {DeviceType::kDvd, 700, "FastForward\n"},
               {DeviceType::kTv, 700, "EndScan\n"}};
  for (const auto& [type, heldMs, whenLetGo] : cases) {
    SCOPED_TRACE(static_cast<int>(type));
    Use(type);
    log.clear();
    Down(kCommandFastForward);
    PumpFor(static_cast<DWORD>(heldMs));
    EXPECT_EQ(log, "");
    Up(kCommandFastForward);
    PumpFor(600);
    EXPECT_EQ(log, whenLetGo);
  }
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

// Keys of the keyboard, held or not while `work` is done.
template <typename Work>
void Holding(std::initializer_list<int> keys, Work work) {
  std::array<BYTE, 256> state{};
  for (const int key : keys) state.at(static_cast<std::size_t>(key)) = 0x80;
  ::SetKeyboardState(state.data());
  work();
  state.fill(0);
  ::SetKeyboardState(state.data());
}

// What the message loop does with a key that is pressed; true when it did not come to the button.
bool Pressed(WPARAM key, HWND window) { return MoveKeyFocus({window, WM_KEYDOWN, key, 1, 0, {}}); }

TEST_F(ButtonBehaviourTest, TabReachesEveryKey) {
  const auto tab = [] { return Pressed(VK_TAB, ::GetFocus()); };
  ::SetFocus(Button(kCommandPower));
  EXPECT_TRUE(Pressed(VK_SPACE, ::GetFocus())) << "not seen yet, it is not pressed";
  EXPECT_FALSE(Pressed(VK_SPACE, ::GetFocus()));
  MoveKeyFocus({Button(kCommandRepeat), WM_LBUTTONDOWN, MK_LBUTTON, 0, 0, {}});
  for (std::size_t row = 0; row < kButtonCount; ++row) {
    EXPECT_TRUE(tab());
    EXPECT_EQ(RowOf(::GetFocus()), row);
  }
  tab();
  EXPECT_EQ(RowOf(::GetFocus()), 0U) << "from the last to the first";
  Holding({VK_SHIFT}, tab);
  EXPECT_EQ(RowOf(::GetFocus()), kButtonCount - 1);

  std::vector<int> groups;
  Holding({VK_CONTROL}, [&] {
    for (int i = 0; i < 7; ++i) {
      tab();
      groups.push_back(kButtons[RowOf(::GetFocus())].command);
    }
  });
  EXPECT_EQ(groups, (std::vector<int>{kCommandPower, kCommandMediaSelect, kCommandOpenMediaFile,
                                      kCommandDigit0 + 1, kCommandMute, kCommandFullScreen, kCommandPower}));
  EXPECT_FALSE(Pressed(VK_TAB, nullptr)) << "another window's";
}

TEST_F(ButtonBehaviourTest, TheSpaceBarHoldsAKeyAsTheMouseDoes) {
  Use(DeviceType::kCd);
  const HWND forward = Button(kCommandFastForward);
  ::SetFocus(forward);
  ::SendMessageA(forward, WM_KEYDOWN, VK_SPACE, 1);
  for (int i = 0; i < 3; ++i) {
    PumpFor(250);
    ::SendMessageA(forward, WM_KEYDOWN, VK_SPACE, 1 | (KF_REPEAT << 16));  // the keyboard's own repeat
  }
  EXPECT_TRUE(PumpUntil([&] { return Times("FastForward") > 0; }));
  ::SendMessageA(forward, WM_MOUSEMOVE, 0, MAKELPARAM(500, 500));
  log.clear();
  EXPECT_TRUE(PumpUntil([&] { return Times("FastForward") > 0; })) << "no mouse holds it";
  ::SendMessageA(forward, WM_KEYUP, VK_SPACE, 1);
  EXPECT_EQ(Times("EndScan"), 1);
  log.clear();
  PumpFor(300);
  EXPECT_EQ(log, "");
}

// The space bar that only shows where the keyboard is never goes down on the button, but up.
TEST_F(ButtonBehaviourTest, ASpaceBarThatDidNotPressAKeyLetsNoneGo) {
  Use(DeviceType::kDvd);
  const HWND forward = Button(kCommandFastForward);
  ::SetFocus(forward);
  ::SendMessageA(forward, WM_KEYUP, VK_SPACE, 1);
  EXPECT_EQ(log, "");
  ::SendMessageA(forward, WM_KEYDOWN, VK_SPACE, 1);
  ::SendMessageA(forward, WM_KEYUP, VK_SPACE, 1);
  EXPECT_EQ(log, "FastForward\n");
}

TEST_F(ButtonBehaviourTest, AKeyThatIsHeldAfterADoubleClickEndsWhereverItIsLetGo) {
  Use(DeviceType::kCd);
  const HWND forward = Button(kCommandFastForward);
  ::SendMessageA(forward, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(5, 5));
  EXPECT_EQ(::GetCapture(), forward);
  EXPECT_TRUE(PumpUntil([&] { return Times("FastForward") > 0; }));
  Move(kCommandFastForward, 500, 500);
  Up(kCommandFastForward, 500, 500);
  EXPECT_EQ(Times("EndScan"), 1);
  log.clear();
  PumpFor(300);
  EXPECT_EQ(log, "");
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

}  // namespace
}  // namespace quorvex
