// The stations that the virtual tuner receives: a text that the user may edit.
//
// A line is "antenna NUMBER NAME" or "cable NUMBER NAME"; a line that begins with # is a remark. Of two lines
// for one channel the first counts. Behind the name there may be " | " and the path of a media file, which
// the station then sends, over and over.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/tv/channel_plan.h"

namespace quorvex {

struct Station {
  TunerInput input = TunerInput::kAntenna;
  int channel = 0;
  std::string name;
  std::string file;  // what it sends; empty for its test picture
  friend bool operator==(const Station&, const Station&) = default;
};

// What is on the air before anybody has edited anything.
extern const std::string_view kFirstStations;

// Lines that are no stations are passed over.
std::vector<Station> ReadStations(std::string_view text);

// Null when there is nothing but noise.
const Station* FindStation(const std::vector<Station>& stations, TunerInput input, int channel);

}  // namespace quorvex
