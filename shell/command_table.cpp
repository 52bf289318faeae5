#include "shell/command_table.h"

#include <algorithm>
#include <array>

#include "devices/audio_adjustment.h"
#include "devices/current_device.h"
#include "panel/commands.h"
#include "shell/actions.h"
#include "shell/device_switch.h"
#include "shell/media_select_menu.h"
#include "shell/open_files.h"

namespace quorvex {
namespace {

// Calls an operation of the current device, with these arguments; nothing without a device.
template <auto kOperation, int... kArguments>
void OnDevice() {
  if (currentDevice) (currentDevice.get()->*kOperation)(kArguments...);
}

void Nothing() {}

constexpr CommandKey kNoKey{};
constexpr CommandKey Plain(WORD virtualKey) { return {FVIRTKEY | FNOINVERT, virtualKey}; }
constexpr CommandKey Control(char letter) {
  return {FVIRTKEY | FNOINVERT | FCONTROL, static_cast<WORD>(letter)};
}
constexpr CommandKey Alt(WORD virtualKey) { return {FVIRTKEY | FNOINVERT | FALT, virtualKey}; }
constexpr CommandKey Character(char character) { return {0, static_cast<WORD>(character)}; }

template <int kDigit>
constexpr CommandRow DigitRow() {
  return {kCommandDigit0 + kDigit, Plain('0' + kDigit), OnDevice<&CDevice::EnterDigit, kDigit>};
}

constexpr auto kTable = std::to_array<CommandRow>({
    {kCommandPlay, kNoKey, [] { PlayAtRate(1.0); }},
    {kCommandStop, kNoKey, OnDevice<&CDevice::Stop>},
    {kCommandOpenMediaFile, Control('F'), OpenMediaFile},
    {kCommandDvd, kNoKey, [] { SwitchToDvd(); }},
    {kCommandFastForward, kNoKey, Nothing},  // the button acts while it is held
    {kCommandRewind, kNoKey, Nothing},
    {kCommandPause, kNoKey, OnDevice<&CDevice::Pause>},
    {kCommandSlowPlay, kNoKey, [] { PlayAtRate(0.5); }},
    {kCommandFullScreen, Plain(VK_ESCAPE), ToggleFullScreen},
    {kCommandNext, Plain(VK_NEXT), OnDevice<&CDevice::NextItem>},
    {kCommandPrevious, Plain(VK_PRIOR), OnDevice<&CDevice::PreviousItem>},
    {kCommandPower, Alt(VK_F4), Power},
    {kCommandCd, kNoKey, [] { SwitchToCd(); }},
    DigitRow<0>(),
    DigitRow<1>(),
    DigitRow<2>(),
    DigitRow<3>(),
    DigitRow<4>(),
    DigitRow<5>(),
    DigitRow<6>(),
    DigitRow<7>(),
    DigitRow<8>(),
    DigitRow<9>(),
    {kCommandRight, Plain(VK_RIGHT), PressRight},
    {kCommandLeft, Plain(VK_LEFT), PressLeft},
    {kCommandEject, kNoKey, OnDevice<&CDevice::Eject>},
    {kCommandRepeat, kNoKey, OnDevice<&CDevice::ToggleRepeat>},
    {kCommandRecord, kNoKey, OnDevice<&CDevice::Record>},
    {kCommandDecimalPoint, Character('.'), Nothing},
    {kCommandAddChannel, Plain(VK_INSERT), OnDevice<&CDevice::AddChannel>},
    {kCommandWideScreen, kNoKey, Nothing},
    {kCommandVideoInput, Control('V'), OnDevice<&CDevice::SelectVideoInput>},
    {kCommandAudioMode, kNoKey, Nothing},
    {kCommandClosedCaption, Control('C'), OnDevice<&CDevice::ToggleClosedCaption>},
    {kCommandDeleteChannel, Plain(VK_DELETE), OnDevice<&CDevice::DeleteChannel>},
    {kCommandHelp, kNoKey, Nothing},
    {kCommandHidePlayer, Control('H'), HidePlayer},
    {kCommandTimer, kNoKey, Nothing},
    {kCommandMediaSelect, Control('S'), ShowMediaSelectMenu},
    {kCommandUp, Plain(VK_UP), PressUp},
    {kCommandDown, Plain(VK_DOWN), PressDown},
    {kCommandScanMode, kNoKey, Nothing},
    {kCommandMute, kNoKey, PressMute},
    {kCommandMenu, Control('M'), OnDevice<&CDevice::ShowMenu, 3>},
    {kCommandStreamMenu, Control('L'), OnDevice<&CDevice::ShowStreamMenu>},
    {kCommandSetup, kNoKey, Setup},
    {kCommandEnter, Plain(VK_RETURN), OnDevice<&CDevice::ConfirmEntry>},
    {kCommandLastChannel, Control('R'), OnDevice<&CDevice::RecallLastChannel>},
    {kCommandIncrease, Plain(VK_ADD), OnDevice<&CDevice::Increase>},
    {kCommandDecrease, Plain(VK_SUBTRACT), OnDevice<&CDevice::Decrease>},
    {kCommandF5, Plain(VK_F5), Nothing},
    {kCommandF5 + 1, Plain(VK_F6), Nothing},
    {kCommandF5 + 2, Plain(VK_F7), Nothing},
    {kCommandF5 + 3, Plain(VK_F8), Nothing},
    {kCommandRandom, kNoKey, OnDevice<&CDevice::ToggleRandom>},
    {kCommandAudioAdjustment, kNoKey, ShowAudioAdjustment},
    {kCommandVideoAdjustment, kNoKey, OnDevice<&CDevice::ShowVideoAdjustment>},
});

static_assert(std::is_sorted(kTable.begin(), kTable.end(),
                             [](const CommandRow& a, const CommandRow& b) { return a.command <= b.command; }),
              "ascending and unique");

constexpr bool IsWithin(int command, int first, int last) { return command >= first && command <= last; }

// A number that stands for a choice from a list.
void RunChoice(int command) {
  if (IsWithin(command, kFirstCaptureDeviceCommand, kLastCaptureDeviceCommand)) {
    SwitchToTv(command - kFirstCaptureDeviceCommand);
  } else if (command == kCommandCloseDevice) {
    SwitchToNone();
  } else if (!currentDevice) {
    return;
  } else if (IsWithin(command, kFirstChapterCommand, kLastChapterCommand)) {
    if (currentDevice->kind == DeviceType::kDvd)
      currentDevice->PlayChapter(command - kFirstChapterCommand + 1);
  } else if (IsWithin(command, kFirstSubtitleCommand, kLastSubtitleCommand)) {
    currentDevice->SelectSubtitle(command);
  } else if (IsWithin(command, kFirstAudioTrackCommand, kLastAudioTrackCommand)) {
    currentDevice->SelectAudioTrack(command);
  }
}

}  // namespace

std::span<const CommandRow> CommandTable() { return kTable; }

void RunCommand(int command) {
  const auto row =
      std::lower_bound(kTable.begin(), kTable.end(), command,
                       [](const CommandRow& candidate, int number) { return candidate.command < number; });
  if (row != kTable.end() && row->command == command) {
    row->action();
  } else {
    RunChoice(command);
  }
}

}  // namespace quorvex
