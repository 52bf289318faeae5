// What the card receives at a moment.
#pragma once

#include <string>

namespace quorvex {

struct Scene {
  int input = 0;       // 0: the tuner; 1 and 2: the video inputs
  int channel = 0;     // the tuner's
  bool signal = true;  // without it there is only noise
  std::string name;    // of the station or input
  std::string file;    // the media file (UTF-8) that the station sends; empty for its test picture
  friend bool operator==(const Scene&, const Scene&) = default;
};

}  // namespace quorvex
