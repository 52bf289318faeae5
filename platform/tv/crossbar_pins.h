// The pins of the TV card's crossbar.
#pragma once

#include <array>

namespace quorvex {

struct CrossbarPin {
  long type;    // PhysicalConnectorType
  int related;  // the sound's or picture's pin on the same side that belongs to it
  int input;    // what comes in there: 0 the tuner, 1 and 2 the video inputs
};

// Pictures, then their sounds.
inline constexpr std::array kCrossbarInputs{
    CrossbarPin{2, 3, 1},       // composite
    CrossbarPin{1, 4, 0},       // tuner
    CrossbarPin{3, 5, 2},       // S-video
    CrossbarPin{0x1001, 0, 1},  // line
    CrossbarPin{0x1000, 1, 0},  // the tuner's sound
    CrossbarPin{0x1006, 2, 2},  // auxiliary
};
inline constexpr std::array kCrossbarOutputs{CrossbarPin{11, 1, 0},
                                             CrossbarPin{0x1009, 0, 0}};  // to the decoders

inline constexpr int kCrossbarPictures = 3;

// What comes in by a picture's pin.
constexpr int InputOfPin(int pin) {
  return pin >= 0 && pin < kCrossbarPictures ? kCrossbarInputs[static_cast<std::size_t>(pin)].input : 0;
}

}  // namespace quorvex
