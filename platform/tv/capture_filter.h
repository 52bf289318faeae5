// The capture filter of a virtual card: its pins, and what the card can do.
#pragma once

#include <memory>

#include "platform/common/filter_base.h"
#include "platform/tv/capture_pin.h"
#include "platform/tv/crossbar.h"
#include "platform/tv/driver_dialogs.h"
#include "platform/tv/picture_controls.h"
#include "platform/tv/preview_pin.h"
#include "platform/tv/shared_card.h"
#include "platform/tv/sound_cable.h"
#include "platform/tv/tv_tuner.h"
#include "platform/tv/vbi_pins.h"

namespace quorvex {

class CaptureFilter final : public FilterBase, private LiveDevice {
 public:
  explicit CaptureFilter(const CardTraits& itsTraits);

  // While it is paused it sends nothing, as live sources do: VFW_S_CANT_CUE.
  HRESULT STDMETHODCALLTYPE GetState(DWORD timeoutMs, FILTER_STATE* current) override;

 protected:
  ~CaptureFilter() override = default;
  void* Find(REFIID iid) override;
  std::vector<IPin*> Pins() override;
  HRESULT OnStart() override;
  void OnStop() override;

 private:
  std::vector<LivePin*> LivePins();
  bool IsThere() override;
  std::uint32_t Slowness() override { return card->slowFrames; }

  const CardTraits& traits;
  SharedCard card;
  Reception reception;
  PictureSource source;
  PictureControls controls;
  DriverDialogs dialogs;
  TvTuner tuner;
  Crossbar crossbar;
  const bool hasCrossbar;
  const bool hasCaptions;
  std::atomic<bool> lost{false};  // the card was pulled out
  CapturePin capturePin;
  PreviewPin previewPin;
  VbiPin vbiPin;
  VideoPortVbiPin videoPortPin;
  SoundCable cable;
};

}  // namespace quorvex
