#include "platform/cd/time_format.h"

namespace quorvex {
namespace {

constexpr std::uint32_t Msf(int frames) {
  const auto minutes = static_cast<std::uint32_t>(frames / kFramesPerSecond / 60);
  const auto seconds = static_cast<std::uint32_t>(frames / kFramesPerSecond % 60);
  return minutes | seconds << 8 | static_cast<std::uint32_t>(frames % kFramesPerSecond) << 16;
}

constexpr int FromMsf(std::uint32_t value) {
  const auto byte = [value](int index) { return static_cast<int>(value >> (8 * index) & 0xFFU); };
  return (byte(0) * 60 + byte(1)) * kFramesPerSecond + byte(2);
}

constexpr std::uint32_t Milliseconds(int frames) {
  return static_cast<std::uint32_t>(static_cast<std::int64_t>(frames) * 1000 / kFramesPerSecond);
}

// Rounded up, so that a place asked for and given back names the frame it came from.
constexpr int FromMilliseconds(std::uint32_t value) {
  return static_cast<int>((static_cast<std::int64_t>(value) * kFramesPerSecond + 999) / 1000);
}

std::optional<int> OnDisc(const DiscTimes& disc, int frame) {
  const bool inside = !disc.tracks.empty() && frame >= 0 && frame <= disc.leadOut;
  return inside ? std::optional(frame) : std::nullopt;
}

std::optional<int> OnTrack(const DiscTimes& disc, std::uint32_t value) {
  const std::size_t track = value & 0xFFU;
  if (track < 1 || track > disc.tracks.size()) return std::nullopt;
  const int within = FromMsf(value >> 8);
  if (within > disc.tracks[track - 1].length) return std::nullopt;
  return disc.tracks[track - 1].start + within;
}

}  // namespace

int DiscTimes::TrackAt(int frame) const {
  int track = 1;
  while (track < static_cast<int>(tracks.size()) && frame >= tracks[static_cast<std::size_t>(track)].start)
    ++track;
  return track;
}

std::uint32_t PackPlace(const DiscTimes& disc, TimeFormat format, int frame) {
  switch (format) {
    case TimeFormat::kMilliseconds: return Milliseconds(frame + kLeadInFrames);
    case TimeFormat::kMsf: return Msf(frame + kLeadInFrames);
    case TimeFormat::kTmsf: break;
  }
  const int track = disc.TrackAt(frame);
  const int start = disc.tracks[static_cast<std::size_t>(track - 1)].start;
  return static_cast<std::uint32_t>(track) | Msf(frame > start ? frame - start : 0) << 8;
}

std::uint32_t PackLength(TimeFormat format, int frames) {
  return format == TimeFormat::kMilliseconds ? Milliseconds(frames) : Msf(frames);
}

std::optional<int> UnpackPlace(const DiscTimes& disc, TimeFormat format, std::uint32_t value) {
  switch (format) {
    case TimeFormat::kMilliseconds:
      return value > Milliseconds(kMostFrames) ? std::nullopt
                                               : OnDisc(disc, FromMilliseconds(value) - kLeadInFrames);
    case TimeFormat::kMsf: return OnDisc(disc, FromMsf(value) - kLeadInFrames);
    case TimeFormat::kTmsf: break;
  }
  return OnTrack(disc, value);
}

}  // namespace quorvex
