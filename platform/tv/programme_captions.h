// The captions of the virtual card's programmes, as line 21 carries them: two bytes a picture.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>

#include "platform/tv/scene.h"

namespace quorvex {

struct CaptionPair {
  std::uint8_t first = 0x80;  // with parity; these two say nothing
  std::uint8_t second = 0x80;
};

class ProgrammeCaptions {
 public:
  // The pair of the next picture. Stations have captions; what comes in elsewhere has none.
  CaptionPair Next(const Scene& received);

 private:
  void BeginLine();
  void AddCode(int first, int second);
  void AddText(std::string_view text);

  Scene scene;
  std::deque<CaptionPair> waiting;
  int rest = 0;  // pictures until the next line
  int line = 0;
};

// What a programme's caption says, from 0; the lines follow each other for ever.
std::string CaptionLine(const Scene& scene, int line);

}  // namespace quorvex
