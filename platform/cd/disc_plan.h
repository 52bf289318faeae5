// How a disc is put together: its tracks, and from which file each of its sectors comes. Places and lengths
// are in frames (sectors), 75 a second, counted from the start of the disc's program area, which MCI calls
// 00:02:00.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quorvex {

inline constexpr int kFramesPerSecond = 75;
inline constexpr int kLeadInFrames = 150;  // what absolute minutes and seconds count before the program area
inline constexpr int kAudioSectorBytes = 2352;
inline constexpr int kMostTracks = 99;
inline constexpr int kMostFrames = 100 * 60 * kFramesPerSecond;  // as far as minutes of two digits reach

struct DiscTrack {
  bool audio = true;
  int start = 0;   // where the track begins to play (its index 1)
  int length = 0;  // up to the next track's start, so with that one's pause
};

// A file that sectors come from.
struct DiscSource {
  enum class Format { kRaw, kSwappedRaw, kWave };  // swapped: 16-bit samples with the high byte first

  std::string name;  // as the sheet names it
  Format format = Format::kRaw;
  std::int64_t dataOffset = 0;  // of the first byte that counts
  std::int64_t dataBytes = 0;
};

// A stretch of the disc whose sectors follow each other in one file, or are silent.
struct DiscExtent {
  static constexpr int kSilence = -1;

  int start = 0;
  int length = 0;
  int source = kSilence;    // index of the file
  std::int64_t offset = 0;  // in the file's data
  int sectorBytes = kAudioSectorBytes;
};

struct DiscPlan {
  std::vector<DiscTrack> tracks;
  std::vector<DiscExtent> extents;  // ascending, without gaps
  std::vector<DiscSource> sources;
  int leadOut = 0;  // the disc's length
};

}  // namespace quorvex
