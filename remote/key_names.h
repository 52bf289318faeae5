// What scripts call the keys of the remote control.
#pragma once

#include <array>
#include <string_view>

#include "panel/commands.h"

namespace quorvex {

struct KeyName {
  std::string_view name;
  int command;
};

inline constexpr auto kKeyNames = std::to_array<KeyName>({
    {"play", kCommandPlay},
    {"stop", kCommandStop},
    {"pause", kCommandPause},
    {"previous", kCommandPrevious},
    {"next", kCommandNext},
    {"rewind", kCommandRewind},
    {"forward", kCommandFastForward},
    {"eject", kCommandEject},
    {"record", kCommandRecord},
    {"repeat", kCommandRepeat},
    {"random", kCommandRandom},
    {"cd", kCommandCd},
    {"dvd", kCommandDvd},
    {"close", kCommandCloseDevice},
    {"open", kCommandOpenMediaFile},
    {"media-select", kCommandMediaSelect},
    {"full-screen", kCommandFullScreen},
    {"mute", kCommandMute},
    {"0", kCommandDigit0},
    {"1", kCommandDigit0 + 1},
    {"2", kCommandDigit0 + 2},
    {"3", kCommandDigit0 + 3},
    {"4", kCommandDigit0 + 4},
    {"5", kCommandDigit0 + 5},
    {"6", kCommandDigit0 + 6},
    {"7", kCommandDigit0 + 7},
    {"8", kCommandDigit0 + 8},
    {"9", kCommandDigit0 + 9},
    {"enter", kCommandEnter},
    {"up", kCommandUp},
    {"down", kCommandDown},
    {"left", kCommandLeft},
    {"right", kCommandRight},
    {"sound", kCommandAudioAdjustment},
    {"picture", kCommandVideoAdjustment},
    {"captions", kCommandClosedCaption},
    {"menu", kCommandMenu},
    {"streams", kCommandStreamMenu},
    {"input", kCommandVideoInput},
    {"add", kCommandAddChannel},
    {"delete", kCommandDeleteChannel},
    {"recall", kCommandLastChannel},
    {"setup", kCommandSetup},
    {"hide", kCommandHidePlayer},
    {"power", kCommandPower},
});

}  // namespace quorvex
