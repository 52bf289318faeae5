#include "devices/tv/tv_settings.h"

#include "base/text.h"
#include "devices/tv/capture_size.h"
#include "devices/tv/channel_list.h"

namespace quorvex {
namespace {

constexpr char kTv[] = "TV";
constexpr char kCapture[] = "CAPTURE";

const char* ChannelKey(TunerFeed input) {
  return input == TunerFeed::kAntenna ? "AntennaChannelList" : "CableChannelList";
}

const char* Flag(bool set) { return set ? "1" : "0"; }

}  // namespace

TvSettings ReadTvSettings(const IniDocument& store) {
  TvSettings settings;
  if (store.Integer(kTv, "TunerInputType", 1) == 0) settings.tunerInput = TunerFeed::kCable;
  const int input = store.Integer(kTv, "VideoInputType", 0);
  if (input >= 0 && input < kVideoInputCount) settings.videoInput = static_cast<VideoInput>(input);
  settings.captionsOn = store.Integer(kTv, "ClosedCaption", 0) != 0;
  settings.captionOpaque = store.Integer(kTv, "CCOpaque", 1) != 0;
  return settings;
}

CaptureSettings ReadCaptureSettings(const IniDocument& store) {
  CaptureSettings settings;
  settings.audio = store.Integer(kCapture, "CaptureAudio", 1) != 0;
  settings.file = FirstCharacters(store.Find(kCapture, "CaptureFile").value_or(""), kLongestCapturePath);
  settings.promptToSave = store.Integer(kCapture, "PromptToSave", 0) != 0;
  settings.useFrameRate = store.Integer(kCapture, "UseFrameRate", 1) != 0;
  settings.frameRate = FrameRateOf(store.Integer(kCapture, "FrameRate", 666666));
  settings.timeLimitSeconds = static_cast<std::uint32_t>(store.Integer(kCapture, "TimeLimit", 10));
  settings.timeLimitOn = settings.timeLimitSeconds != 0 && store.Integer(kCapture, "EnableTimeLimit", 0) != 0;
  settings.masterStream = store.Integer(kCapture, "MasterStream", -1);
  return settings;
}

void WriteTvSettings(IniDocument& store, const TvSettings& settings) {
  store.Set(kTv, "TunerInputType", std::to_string(static_cast<int>(settings.tunerInput)));
  store.Set(kTv, "VideoInputType", std::to_string(static_cast<int>(settings.videoInput)));
  store.Set(kTv, "ClosedCaption", Flag(settings.captionsOn));
  store.Set(kTv, "CCOpaque", Flag(settings.captionOpaque));
}

void WriteCaptureSettings(IniDocument& store, const CaptureSettings& settings) {
  store.Set(kCapture, "CaptureAudio", Flag(settings.audio));
  store.Set(kCapture, "CaptureFile", settings.file);
  store.Set(kCapture, "PromptToSave", Flag(settings.promptToSave));
  store.Set(kCapture, "FrameRate", std::to_string(FrameTimeOf(settings.frameRate)));
  store.Set(kCapture, "UseFrameRate", Flag(settings.useFrameRate));
  store.Set(kCapture, "EnableTimeLimit", Flag(settings.timeLimitOn));
  store.Set(kCapture, "TimeLimit", std::to_string(static_cast<std::int32_t>(settings.timeLimitSeconds)));
  store.Set(kCapture, "MasterStream", std::to_string(settings.masterStream));
}

int ReadLastChannel(const IniDocument& store) { return store.Integer(kTv, "LastChannel", -1); }

std::string ReadChannelText(const IniDocument& store, TunerFeed input) {
  return std::string(store.Find(kTv, ChannelKey(input)).value_or(""));
}

void WriteChannels(IniDocument& store, TunerFeed input, std::span<const int> channels) {
  store.Set(kTv, ChannelKey(input), StoredChannels(channels));
}

void WriteChannelList(IniDocument& store, TunerFeed input, const PlayOrder& channels) {
  if (channels.orderLength == 0) return;
  store.Set(kTv, "LastChannel", std::to_string(channels.CurrentEntry()));
  WriteChannels(store, input, ListedChannels(channels));
}

}  // namespace quorvex
