#include "platform/common/sound_converter.h"

#include <algorithm>

namespace quorvex {

bool SoundConverter::PrepareResampler(const AVFrame& frame) {
  const int channels = frame.ch_layout.nb_channels;
  if (resampler && frame.format == sourceFormat && frame.sample_rate == sourceRate &&
      channels == sourceChannels)
    return true;
  sourceFormat = frame.format;
  sourceRate = frame.sample_rate;
  sourceChannels = channels;
  AVChannelLayout source{};
  if (frame.ch_layout.order == AV_CHANNEL_ORDER_UNSPEC) {
    av_channel_layout_default(&source, channels);
  } else {
    av_channel_layout_copy(&source, &frame.ch_layout);
  }
  AVChannelLayout target{};
  av_channel_layout_default(&target, kSoundChannels);
  SwrContext* made = nullptr;
  const bool ready =
      swr_alloc_set_opts2(&made, &target, AV_SAMPLE_FMT_S16, rate, &source,
                          static_cast<AVSampleFormat>(frame.format), frame.sample_rate, 0, nullptr) >= 0 &&
      swr_init(made) >= 0;
  resampler.reset(made);
  av_channel_layout_uninit(&source);
  if (!ready) resampler.reset();
  return ready;
}

SoundSamples SoundConverter::Convert(const AVFrame& frame) {
  if (frame.nb_samples <= 0 || !PrepareResampler(frame)) return {};
  const int room = swr_get_out_samples(resampler.get(), frame.nb_samples);
  if (room < 0) return {};
  converted.resize(static_cast<std::size_t>(room) * kSoundChannels);
  auto* target = reinterpret_cast<std::uint8_t*>(converted.data());
  const int count = swr_convert(resampler.get(), &target, room,
                                const_cast<const std::uint8_t**>(frame.extended_data), frame.nb_samples);
  converted.resize(static_cast<std::size_t>(std::max(count, 0)) * kSoundChannels);
  return converted;
}

}  // namespace quorvex
