// The audio capture filter of the line input: what the TV card receives, as the sound card would record it.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "platform/tv/line_config.h"
#include "platform/tv/live_pin.h"
#include "platform/tv/reception.h"
#include "platform/tv/scene_sound.h"
#include "platform/tv/shared_card.h"
#include "platform/tv/stream_control.h"

namespace quorvex {

class LinePin final : public LivePin {
 public:
  LinePin(FilterBase& owner, LiveDevice& itsDevice, Reception& received);
  ~LinePin() { End(); }

 protected:
  void* Find(REFIID iid) override;
  void OnDisconnected() override { control.Forget(); }
  std::vector<MediaType> Types() override;
  ALLOCATOR_PROPERTIES BufferNeeds(const MediaType& type) override;
  MediaTime FrameTime() override { return kSecond / 20; }
  // The sound card keeps what is not fetched at once.
  bool MayLose() override { return false; }
  void OnBegin() override;
  void Send(const FramePacer::Frame& frame) override;

 private:
  void Fill(std::span<BYTE> bytes, const FramePacer::Frame& frame);

  Reception& reception;
  LineConfig config;
  StreamControl control;
  WaveFormat format;  // as agreed with the other end
  std::optional<SceneSound> sound;
  std::vector<std::int16_t> samples;
};

class LineInput final : public FilterBase, private LiveDevice {
 public:
  LineInput();

  // While it is paused it sends nothing, as live sources do: VFW_S_CANT_CUE.
  HRESULT STDMETHODCALLTYPE GetState(DWORD timeoutMs, FILTER_STATE* current) override;

 protected:
  ~LineInput() override = default;
  std::vector<IPin*> Pins() override { return {&pin}; }
  HRESULT OnStart() override { return pin.Begin(); }
  void OnStop() override { pin.End(); }

 private:
  // The sound card stays when the TV card goes.
  bool IsThere() override { return true; }
  std::uint32_t Slowness() override { return 0; }

  SharedCard card;
  Reception reception;
  LinePin pin;
};

}  // namespace quorvex
