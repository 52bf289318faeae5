// The list of stations, which the user may edit.
#include "platform/tv/stations.h"

#include "tests/fuzz/fuzz_target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  using quorvex::Require;
  const std::vector<quorvex::Station> stations = quorvex::ReadStations(quorvex::TextOf(bytes, size));
  for (const quorvex::Station& station : stations) {
    Require(station.channel > 0, "a channel is above 0");
    Require((station.name + station.file).find('\n') == std::string::npos, "a station is a line");
    const quorvex::Station* found = quorvex::FindStation(stations, station.input, station.channel);
    Require(found != nullptr && found <= &station, "of two lines for a channel the first counts");
  }
  return 0;
}
