#include "platform/tv/stations.h"

#include <algorithm>
#include <optional>
#include <sstream>

namespace quorvex {
namespace {

std::string Trimmed(const std::string& text) {
  constexpr char kBlanks[] = " \t\r";
  const std::size_t first = text.find_first_not_of(kBlanks);
  return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(kBlanks) + 1 - first);
}

std::optional<Station> ReadStation(const std::string& line) {
  std::istringstream words(line);
  std::string input;
  Station station;
  words >> input >> station.channel >> std::ws;
  if (words.fail() && !words.eof()) return std::nullopt;
  if (station.channel <= 0 || (input != "antenna" && input != "cable")) return std::nullopt;
  station.input = input == "cable" ? TunerInput::kCable : TunerInput::kAntenna;
  std::string rest;
  std::getline(words, rest);
  const std::size_t bar = rest.find('|');
  station.name = Trimmed(rest.substr(0, bar));
  if (bar != std::string::npos) station.file = Trimmed(rest.substr(bar + 1));
  return station;
}

}  // namespace

const std::string_view kFirstStations =
    "# The stations that the virtual TV card receives: \"antenna NUMBER NAME\" or \"cable NUMBER NAME\" a "
    "line.\r\n"
    "# Behind the name, a media file that the station sends over and over: \"antenna 9 FILM | "
    "C:\\film.mpg\".\r\n"
    "antenna 2 CITY NEWS\r\n"
    "antenna 4 MUSIC\r\n"
    "antenna 5 CINEMA\r\n"
    "antenna 7 SPORTS\r\n"
    "antenna 11 WEATHER\r\n"
    "antenna 21 NATURE\r\n"
    "antenna 27 SCIENCE\r\n"
    "antenna 45 CARTOONS\r\n"
    "cable 2 CITY NEWS\r\n"
    "cable 3 CINEMA\r\n"
    "cable 6 MUSIC\r\n"
    "cable 12 SPORTS\r\n"
    "cable 18 WEATHER\r\n"
    "cable 23 TRAVEL\r\n"
    "cable 36 NATURE\r\n"
    "cable 99 SCIENCE\r\n"
    "cable 125 NIGHT OWL\r\n";

std::vector<Station> ReadStations(std::string_view text) {
  std::vector<Station> stations;
  std::istringstream lines{std::string(text)};
  for (std::string line; std::getline(lines, line);) {
    if (const std::optional<Station> station = ReadStation(line)) stations.push_back(*station);
  }
  return stations;
}

const Station* FindStation(const std::vector<Station>& stations, TunerInput input, int channel) {
  const auto found = std::find_if(stations.begin(), stations.end(), [&](const Station& station) {
    return station.input == input && station.channel == channel;
  });
  return found != stations.end() ? &*found : nullptr;
}

}  // namespace quorvex
