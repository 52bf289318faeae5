#include "shell/command_table.h"

#include <vector>

#include "resources/ids.h"
#include "shell/chapters_menu.h"
#include "shell/device_switch.h"
#include "tests/support/menu.h"
#include "tests/support/panel.h"
#include "tests/support/recording_device.h"

namespace quorvex {
namespace {

class CommandsTest : public PanelTest {
 protected:
  void Use(DeviceType type) {
    currentDevice = std::make_unique<RecordingDevice>(type, log);
    currentDeviceType = type;
  }

  // What the current device was asked to do by one command.
  std::string LogOf(int command) {
    log.clear();
    Press(command);
    return log;
  }
};

TEST_F(CommandsTest, TheKeysOfTheTableAreTheAcceleratorsOfTheProgram) {
  const HACCEL handle = ::LoadAcceleratorsA(instance, MAKEINTRESOURCEA(IDR_ACCELERATORS));
  ASSERT_NE(handle, nullptr);
  std::vector<ACCEL> keys(static_cast<std::size_t>(::CopyAcceleratorTableA(handle, nullptr, 0)));
  ::CopyAcceleratorTableA(handle, keys.data(), static_cast<int>(keys.size()));
  EXPECT_EQ(keys.size(), 36U);
  std::size_t known = 0;
  for (const CommandRow& row : CommandTable()) {
    if (row.key.code == 0) continue;
    ++known;
    const auto found =
        std::find_if(keys.begin(), keys.end(), [&](const ACCEL& key) { return key.cmd == row.command; });
    ASSERT_NE(found, keys.end()) << row.command;
    EXPECT_EQ(found->key, row.key.code) << row.command;
    EXPECT_EQ(found->fVirt & ~FNOINVERT, row.key.flags & ~FNOINVERT) << row.command;
  }
  EXPECT_EQ(known, keys.size());
}

TEST_F(CommandsTest, EveryDeviceCommandReachesTheDevice) {
  Use(DeviceType::kTv);
  const std::pair<int, const char*> cases[] = {
      {1000, "Play 0\n"},
      {1001, "Stop\n"},
      {1009, "Pause\n"},
      {1010, "Play 0 slow\n"},
      {1014, "NextItem\n"},
      {1015, "PreviousItem\n"},
      {1018, "EnterDigit 0\n"},
      {1027, "EnterDigit 9\n"},
      {1041, "Eject\n"},
      {1044, "Record\n"},
      {1047, "AddChannel\n"},
      {1049, "SelectVideoInput\n"},
      {1053, "DeleteChannel\n"},
      {1051, "ToggleClosedCaption\n"},
      {1058, "Up\n"},
      {1059, "Down\n"},
      {1069, "ShowMenu 3\n"},
      {1070, "ShowStreamMenu\n"},
      {1072, "ConfirmEntry\n"},
      {1073, "RecallLastChannel\n"},
      {1074, "Increase\n"},
      {1075, "Decrease\n"},
      {1103, "ShowVideoAdjustment\n"},
      {1300, "SelectSubtitle 1300\n"},
      {1349, "SelectSubtitle 1349\n"},
      {1350, "SelectAudioTrack 1350\n"},
      {1399, "SelectAudioTrack 1399\n"},
  };
  for (const auto& [command, operation] : cases) EXPECT_EQ(LogOf(command), operation) << command;
  EXPECT_EQ(LogOf(1000), "Play 0\n") << "slow play must not stay";
}

TEST_F(CommandsTest, CommandsWithoutAnActionAndUnknownOnesChangeNothing) {
  Use(DeviceType::kTv);
  for (const int command : {1003, 1007, 1008, 1032, 1033, 1046, 1048, 1050, 1054, 1056,
                            1060, 1076, 1079, 1104, 1200, 1299, 1400, 1499, 1527, 60000}) {
    EXPECT_EQ(LogOf(command), "") << command;
  }
  EXPECT_EQ(LogOf(5), "") << "chapters are a DVD's";
  Use(DeviceType::kDvd);
  EXPECT_EQ(LogOf(0), "PlayChapter 1\n");
  EXPECT_EQ(LogOf(999), "PlayChapter 1000\n");
}

TEST_F(CommandsTest, RepeatAndRandomAreForDevicesThatPlayInOrder) {
  for (const DeviceType type : {DeviceType::kTv, DeviceType::kDvd}) {
    Use(type);
    EXPECT_EQ(LogOf(kCommandRandom), "");
    Press(kCommandRepeat);
    EXPECT_EQ(Shown(kRepeatLamp) + Shown(kRandomLamp), 0);
  }
  Use(DeviceType::kFile);
  const int lamps[][3] = {{1, 1, 0}, {1, 0, 1}, {0, 0, 0}};
  for (const auto& [repeat, one, all] : lamps) {
    Press(kCommandRepeat);
    EXPECT_EQ(Shown(kRepeatLamp), repeat);
    EXPECT_EQ(Shown(kRepeatOneLamp), one);
    EXPECT_EQ(Shown(kRepeatAllLamp), all);
    EXPECT_EQ(IsLit(kCommandRepeat), repeat == 1);
  }
  for (const int lamp : {1, 0}) {
    EXPECT_EQ(LogOf(kCommandRandom), "OnRandomChanged\n");
    EXPECT_EQ(Shown(kRandomLamp), lamp);
    EXPECT_EQ(IsLit(kCommandRandom), lamp == 1);
  }
}

TEST_F(CommandsTest, DriversAndTimersReachTheDevice) {
  Use(DeviceType::kTv);
  ::SendMessageA(mainWindow, MM_MCINOTIFY, MCI_NOTIFY_SUCCESSFUL, 0);
  ::SendMessageA(mainWindow, WM_USER + 13, 0, 0);
  ::SendMessageA(mainWindow, WM_TIMER, 100, 0);
  ::SendMessageA(mainWindow, WM_TIMER, 106, 0);
  ::SendMessageA(mainWindow, WM_TIMER, 103, 0);
  EXPECT_EQ(log, "OnMciNotify 1\nOnGraphEvent\nOnTick\nOnRecordTick\n");
  currentDevice.reset();
  for (const UINT timer : {100U, 104U, 106U}) ::SendMessageA(mainWindow, WM_TIMER, timer, 0);
  ::SendMessageA(mainWindow, MM_MCINOTIFY, MCI_NOTIFY_SUCCESSFUL, 0);
}

TEST_F(CommandsTest, MediaSelectShowsWhatIsThere) {
  dvdAvailable = false;
  MenuReader menus;
  Press(kCommandMediaSelect);
  EXPECT_EQ(menus.Seen(), "TV/CAP greyed 1500\nDVD greyed 1005\nCD 1017\nMedia File... 1002\n");
  RECT button{};
  ::GetWindowRect(Button(kCommandMediaSelect), &button);
  EXPECT_EQ(menus.Place().x, button.left);
  EXPECT_EQ(menus.Place().y, button.top);
  Use(DeviceType::kCd);
  dvdAvailable = true;
  Press(kCommandMediaSelect);
  EXPECT_EQ(menus.Seen(),
            "TV/CAP greyed 1500\nDVD 1005\nCD checked 1017\nMedia File... 1002\nClose Device 1526\n");
}

TEST_F(CommandsTest, TheChaptersMenuHasTenChaptersAColumn) {
  const UniqueMenu menu = BuildChaptersMenu(25, 12);
  ASSERT_EQ(::GetMenuItemCount(menu.Get()), 26);
  EXPECT_EQ(MenuReader::Describe(menu.Get(), 0), "Chapters greyed 0\n");
  EXPECT_EQ(MenuReader::Describe(menu.Get(), 1), "1 0\n");
  EXPECT_EQ(MenuReader::Describe(menu.Get(), 9), "9 8\n");
  EXPECT_EQ(MenuReader::Describe(menu.Get(), 10), "10 column 9\n");
  EXPECT_EQ(MenuReader::Describe(menu.Get(), 12), "12 checked 11\n");
  EXPECT_EQ(MenuReader::Describe(menu.Get(), 20), "20 column 19\n");
}

TEST_F(CommandsTest, HidingThePlayerMinimisesIt) {
  Press(kCommandHidePlayer);
  EXPECT_TRUE(::IsIconic(mainWindow));
  ::ShowWindow(mainWindow, SW_RESTORE);
  RECT rect{};
  ::GetWindowRect(mainWindow, &rect);
  EXPECT_EQ(rect.right - rect.left, 534);
}

TEST_F(CommandsTest, ThePanelDragsEverywhereAndItsMenuHasOnlyMoveAndClose) {
  EXPECT_EQ(::SendMessageA(mainWindow, WM_NCHITTEST, 0, MAKELPARAM(700, 900)), HTCAPTION);
  const HMENU menu = ::GetSystemMenu(mainWindow, FALSE);
  for (const UINT gone : {SC_SIZE, SC_MAXIMIZE, SC_MINIMIZE})
    EXPECT_EQ(::GetMenuState(menu, gone, MF_BYCOMMAND), 0xFFFFFFFFU);
  for (const UINT there : {SC_MOVE, SC_CLOSE})
    EXPECT_NE(::GetMenuState(menu, there, MF_BYCOMMAND), 0xFFFFFFFFU);
  RECT before{};
  RECT after{};
  ::GetWindowRect(mainWindow, &before);
  ::SendMessageA(mainWindow, WM_NCLBUTTONDBLCLK, HTCAPTION, MAKELPARAM(700, 900));
  ::GetWindowRect(mainWindow, &after);
  EXPECT_TRUE(::EqualRect(&before, &after)) << "a double click must not maximise it";
}

}  // namespace
}  // namespace quorvex
