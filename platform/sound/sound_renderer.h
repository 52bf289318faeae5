// The filter that plays a graph's sound through waveOut, where the machine's mixer reaches it, and is the
// graph's clock.
#pragma once

#include <functional>

#include "platform/common/filter_base.h"
#include "platform/common/filter_part.h"
#include "platform/common/input_pin.h"
#include "platform/common/seeking_pass.h"
#include "platform/sound/renderer_clock.h"
#include "platform/sound/sound_player.h"
#include "platform/sound/volume_control.h"

namespace quorvex {

// {5B4A9D0C-3C1E-4F0B-8C57-7E1D2A6F9B34}
constexpr CLSID kSoundRendererClass = {
    0x5b4a9d0c, 0x3c1e, 0x4f0b, {0x8c, 0x57, 0x7e, 0x1d, 0x2a, 0x6f, 0x9b, 0x34}};

// Its pin: plain sound of one or two channels.
class SoundPin final : public InputPin {
 public:
  SoundPin(FilterBase& owner, SoundPlayer& fed) : InputPin(owner, L"In"), player(fed) {}

  // The format agreed on.
  [[nodiscard]] WaveFormat Format();

 protected:
  std::vector<MediaType> Types() override { return {MediaType::Pcm16(2, 44100)}; }
  bool Takes(const AM_MEDIA_TYPE& type) override;
  HRESULT OnSample(IMediaSample& sample) override;
  void OnEnd() override { player.End(); }
  void OnBeginFlush() override { player.BeginFlush(); }
  void OnEndFlush() override { player.EndFlush(); }

 private:
  SoundPlayer& player;
};

// Says that the filter is a renderer.
class RendererFlags final : public FilterPart<IAMFilterMiscFlags> {
 public:
  using FilterPart::FilterPart;
  ULONG STDMETHODCALLTYPE GetMiscFlags() override { return AM_FILTER_MISC_FLAGS_IS_RENDERER; }
};

// What has been left out of the sound and put into it, in milliseconds.
class PlayedStatistics final : public FilterPart<IAMAudioRendererStats> {
 public:
  PlayedStatistics(FilterBase& owner, SoundPlayer& told) : FilterPart(owner), player(told) {}
  // Silence put in, sound dropped to keep time, and how much waits to be played; E_NOTIMPL for other numbers.
  HRESULT STDMETHODCALLTYPE GetStatParam(DWORD which, DWORD* value, DWORD* second) override;

 private:
  SoundPlayer& player;
};

class SoundRenderer final : public FilterBase, private PlayedStream {
 public:
  SoundRenderer() : FilterBase(kSoundRendererClass) {}

  HRESULT STDMETHODCALLTYPE Pause() override;
  HRESULT STDMETHODCALLTYPE GetState(DWORD timeoutMs, FILTER_STATE* current) override;
  HRESULT STDMETHODCALLTYPE SetSyncSource(IReferenceClock* source) override;

 protected:
  ~SoundRenderer() override = default;
  void* Find(REFIID iid) override;
  std::vector<IPin*> Pins() override { return {&pin}; }
  HRESULT OnStart() override;
  void OnRun() override { player.Run(); }
  void OnHalt() override { player.Halt(); }
  void OnStop() override { player.Stop(); }

 private:
  std::optional<MediaTime> PlayedTime() override { return StreamTime(); }
  SoundGain Gain() override { return volume.Gain(); }
  void OnEarly(MediaTime earliness) override;
  void OnAllHeard() override;

  // Parts that end before those that they use.
  SeekingPass seeking;
  std::atomic<bool> leads{false};  // its clock is the graph's
  VolumeControl volume{*this};
  RendererFlags flags{*this};
  RendererClock clock{*this};
  SoundPlayer player{*this};
  SoundPin pin{*this, player};
  PlayedStatistics statistics{*this, player};
};

}  // namespace quorvex
