// What the TV device keeps in the settings, in their sections TV and CAPTURE.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "base/ini_document.h"
#include "devices/play_order.h"
#include "devices/tv/frame_rate.h"

namespace quorvex {

// The numbers are the platform's.
enum class TunerFeed : int { kCable = 0, kAntenna = 1 };

// What the card shows: its tuner, or what is plugged in beside it.
enum class VideoInput : int { kTuner = 0, kVideo1 = 1, kVideo2 = 2 };
inline constexpr int kVideoInputCount = 3;

struct TvSettings {
  TunerFeed tunerInput = TunerFeed::kAntenna;
  VideoInput videoInput = VideoInput::kTuner;
  bool captionsOn = false;
  bool captionOpaque = true;
};

// The options of recording.
struct CaptureSettings {
  bool audio = true;  // with sound
  std::string file;   // its full path; empty for none
  bool promptToSave = false;
  bool useFrameRate = true;              // the capture device is told the frame rate
  double frameRate = kDefaultFrameRate;  // frames a second, above 0
  bool timeLimitOn = false;
  std::uint32_t timeLimitSeconds = 10;
  int masterStream = -1;  // -1 none, 0 video, 1 sound
};

// What a store says; a value that means nothing counts as its default.
TvSettings ReadTvSettings(const IniDocument& store);
CaptureSettings ReadCaptureSettings(const IniDocument& store);

void WriteTvSettings(IniDocument& store, const TvSettings& settings);
void WriteCaptureSettings(IniDocument& store, const CaptureSettings& settings);

// The channel to start on; -1 for none.
int ReadLastChannel(const IniDocument& store);

// The stored channels of an input, as they are there; and storing those that a run found.
std::string ReadChannelText(const IniDocument& store, TunerFeed input);
void WriteChannels(IniDocument& store, TunerFeed input, std::span<const int> channels);

// Stores a list of channels and which of them is current. An empty list says nothing: what is stored stays.
void WriteChannelList(IniDocument& store, TunerFeed input, const PlayOrder& channels);

}  // namespace quorvex
