// The numbers of the remote control's commands: what buttons, keys and menu items send to the panel.
#pragma once

namespace quorvex {

enum Command : int {
  kCommandPlay = 1000,
  kCommandStop = 1001,
  kCommandOpenMediaFile = 1002,
  kCommandDvd = 1005,
  kCommandFastForward = 1007,
  kCommandRewind = 1008,
  kCommandPause = 1009,
  kCommandSlowPlay = 1010,
  kCommandFullScreen = 1012,
  kCommandNext = 1014,
  kCommandPrevious = 1015,
  kCommandPower = 1016,
  kCommandCd = 1017,
  kCommandDigit0 = 1018,  // the other digits follow
  kCommandDigit9 = 1027,
  kCommandRight = 1032,
  kCommandLeft = 1033,
  kCommandEject = 1041,
  kCommandRepeat = 1043,
  kCommandRecord = 1044,
  kCommandDecimalPoint = 1046,
  kCommandAddChannel = 1047,
  kCommandWideScreen = 1048,
  kCommandVideoInput = 1049,
  kCommandAudioMode = 1050,
  kCommandClosedCaption = 1051,
  kCommandDeleteChannel = 1053,
  kCommandHelp = 1054,
  kCommandHidePlayer = 1055,
  kCommandTimer = 1056,
  kCommandMediaSelect = 1057,
  kCommandUp = 1058,
  kCommandDown = 1059,
  kCommandScanMode = 1060,
  kCommandMute = 1061,
  kCommandMenu = 1069,
  kCommandStreamMenu = 1070,
  kCommandSetup = 1071,
  kCommandEnter = 1072,
  kCommandLastChannel = 1073,
  kCommandIncrease = 1074,
  kCommandDecrease = 1075,
  kCommandF5 = 1076,  // F6, F7 and F8 follow
  kCommandRandom = 1098,
  kCommandAudioAdjustment = 1102,
  kCommandVideoAdjustment = 1103,
};

// Command numbers that stand for a choice from a list: the first of the range plus the index chosen.
inline constexpr int kFirstChapterCommand = 0;
inline constexpr int kLastChapterCommand = 999;
inline constexpr int kFirstSubtitleCommand = 1300;
inline constexpr int kLastSubtitleCommand = 1349;
inline constexpr int kFirstAudioTrackCommand = 1350;
inline constexpr int kLastAudioTrackCommand = 1399;
inline constexpr int kFirstCaptureDeviceCommand = 1500;
inline constexpr int kLastCaptureDeviceCommand = 1519;
inline constexpr int kCommandCloseDevice = 1526;

}  // namespace quorvex
