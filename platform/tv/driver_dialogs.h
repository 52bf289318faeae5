// IAMVfwCaptureDialogs: the dialogs of the card's driver, by which its input, format and picture are chosen.
#pragma once

#include <windows.h>

#include <strmif.h>

#include <functional>

#include "platform/common/filter_part.h"
#include "platform/tv/card_table.h"
#include "platform/tv/picture_source.h"

namespace quorvex {

class DriverDialogs final : public FilterPart<IAMVfwCaptureDialogs> {
 public:
  DriverDialogs(FilterBase& owner, const CardTraits& itsTraits, CardState& itsState, PictureSource& pictures)
      : FilterPart(owner), traits(itsTraits), state(itsState), source(pictures) {}

  HRESULT STDMETHODCALLTYPE HasDialog(int dialog) override;
  // VFW_E_NOT_STOPPED while the filter runs. VFW_E_CANNOT_CONNECT after another format was chosen and pins
  // are connected: they keep the old one until the graph is built anew.
  HRESULT STDMETHODCALLTYPE ShowDialog(int dialog, HWND owner) override;
  HRESULT STDMETHODCALLTYPE SendDriverMessage(int dialog, int message, LONG first, LONG second) override;

 private:
  HRESULT ChooseInput(HWND owner);
  HRESULT ChooseFormat(HWND owner);
  bool HasConnections();

  const CardTraits& traits;
  CardState& state;
  PictureSource& source;
};

}  // namespace quorvex
