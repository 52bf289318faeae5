#include "platform/tv/station_sound.h"

#include <algorithm>
#include <cstdlib>

namespace quorvex {
namespace {

// How far the time may be from what the samples take: clocks differ, and buffers are asked for unevenly.
constexpr MediaTime kTolerated = kSecond / 10;

}  // namespace

void StationSound::Fill(const std::string& path, MediaTime air, std::span<std::int16_t> samples) {
  Tune(path);
  if (!sound || !sound->IsOpen()) {
    std::fill(samples.begin(), samples.end(), std::int16_t{0});
    return;
  }
  if (std::abs(air - expected) > kTolerated) {
    expected = air;
    GoTo(station.Place(air));
  }
  expected += Rescale(static_cast<std::int64_t>(samples.size()) / kSoundChannels, kSecond, rate);
  while (!samples.empty()) Take(samples);
}

void StationSound::Tune(const std::string& path) {
  file = station.Tune(path);
  if (!station.IsNew()) return;
  sound.reset();
  expected = 0;
  if (file != nullptr && file->Sound() != nullptr) sound.emplace(file->Coded(*file->Sound()), rate);
}

void StationSound::GoTo(MediaTime place) {
  file->Seek(place);
  sound->Begin();
  decoded.clear();
  at = decodedAt = Rescale(place, rate, kSecond);
  over = false;
}

// Fills a part of the samples, or reads on until it can.
void StationSound::Take(std::span<std::int16_t>& samples) {
  if (at >= LoopLength()) GoTo(0);
  const auto had = static_cast<std::int64_t>(decoded.size()) / kSoundChannels;
  if (decodedAt + had <= at && !over) {
    DecodeNext();
    return;
  }
  std::int64_t count =
      std::min<std::int64_t>(static_cast<std::int64_t>(samples.size()) / kSoundChannels, LoopLength() - at);
  const bool silent = decodedAt > at || decodedAt + had <= at;
  if (silent && decodedAt > at) count = std::min(count, decodedAt - at);
  if (!silent) count = std::min(count, decodedAt + had - at);
  const auto size = static_cast<std::size_t>(count * kSoundChannels);
  if (silent) {
    std::fill_n(samples.begin(), size, std::int16_t{0});
  } else {
    std::copy_n(decoded.begin() + (at - decodedAt) * kSoundChannels, size, samples.begin());
  }
  samples = samples.subspan(size);
  at += count;
}

void StationSound::DecodeNext() {
  const std::optional<MediaFile::Packet> packet = file->Next();
  over = !packet;
  if (packet && packet->kind != MediaFile::Kind::kSound) return;
  decoded.clear();
  sound->Decode(packet ? packet->data.get() : nullptr, [&](SoundSamples block, MediaTime begin) {
    if (decoded.empty()) decodedAt = Rescale(begin, rate, kSecond);
    decoded.insert(decoded.end(), block.begin(), block.end());
    return true;
  });
}

}  // namespace quorvex
