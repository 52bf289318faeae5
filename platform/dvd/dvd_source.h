// The source filter of a DVD-Video disc: a picture pin and a sound pin, and the interfaces by which
// applications work the disc.
#pragma once

#include <memory>

#include "platform/common/filter_base.h"
#include "platform/common/line21_control.h"
#include "platform/dvd/disc_player.h"
#include "platform/dvd/dvd_control.h"
#include "platform/dvd/dvd_info.h"
#include "platform/dvd/dvd_pin.h"
#include "platform/dvd/opened_disc.h"

namespace quorvex {

// {6F1D9A52-0C7B-4E33-9B8E-3A4D5E21C0D7}
constexpr CLSID kDvdSourceClass = {
    0x6f1d9a52, 0x0c7b, 0x4e33, {0x9b, 0x8e, 0x3a, 0x4d, 0x5e, 0x21, 0xc0, 0xd7}};

class DvdSource final : public FilterBase, private DiscEvents {
 public:
  // Nothing plays without a disc: OpenedDisc is one.
  explicit DvdSource(OpenedDisc opened);

  [[nodiscard]] IPin& PicturePin() { return picturePin; }
  [[nodiscard]] IPin& SoundPin() { return soundPin; }

 protected:
  ~DvdSource() override = default;
  void* Find(REFIID iid) override;
  std::vector<IPin*> Pins() override { return {&picturePin, &soundPin}; }
  HRESULT OnStart() override;
  void OnStop() override;
  void OnHalt() override { player.Cue(); }

 private:
  void Tell(long code, LONG_PTR first, LONG_PTR second) override;

  OpenedDisc disc;
  const Canvas canvas;
  CaptionWishes captions;
  DvdPin picturePin;
  DvdPin soundPin;
  DvdWindow window;
  DiscPlayer player;
  DvdControl control;
  DvdInfo info;
  Line21Control line21;
};

}  // namespace quorvex
