// The sound of the file that a station sends, for one who listens to it.
#pragma once

#include <optional>
#include <vector>

#include "platform/common/timed_sound.h"
#include "platform/tv/station_file.h"

namespace quorvex {

class StationSound {
 public:
  // `samplesPerSecond`: the rate at which it is wanted.
  explicit StationSound(int samplesPerSecond) : rate(samplesPerSecond) {}

  // Fills whole samples (both channels) with what sounds from a time of day (AirTime) on. What is asked for
  // one after the other follows without a gap, as long as the time is about that which the samples take.
  // Silence when there is no sound.
  void Fill(const std::string& path, MediaTime air, std::span<std::int16_t> samples);

 private:
  void Tune(const std::string& path);
  void GoTo(MediaTime place);
  void Take(std::span<std::int16_t>& samples);
  void DecodeNext();
  [[nodiscard]] std::int64_t LoopLength() const { return Rescale(station.Length(), rate, kSecond); }

  const int rate;
  StationFile station;
  MediaFile* file = nullptr;  // the station's; null when there is none
  std::optional<TimedSound> sound;
  std::int64_t at = 0;                // the sample of the loop that is next
  MediaTime expected = 0;             // the time of day at which it sounds
  std::vector<std::int16_t> decoded;  // from the sample decodedAt on
  std::int64_t decodedAt = 0;
  bool over = false;  // the file has no more
};

}  // namespace quorvex
