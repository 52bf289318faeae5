// IAMCrossbar of the TV card.
#pragma once

#include <windows.h>

#include <strmif.h>

#include "platform/common/object_part.h"
#include "platform/tv/card_state.h"

namespace quorvex {

class Crossbar final : public ObjectPart<IAMCrossbar> {
 public:
  Crossbar(IUnknown& filter, CardState& itsState) : ObjectPart(filter), state(itsState) {}

  // NOLINTBEGIN(readability-identifier-naming): the platform's names
  HRESULT STDMETHODCALLTYPE get_PinCounts(LONG* outputs, LONG* inputs) override;
  HRESULT STDMETHODCALLTYPE CanRoute(LONG output, LONG input) override;
  HRESULT STDMETHODCALLTYPE Route(LONG output, LONG input) override;
  HRESULT STDMETHODCALLTYPE get_IsRoutedTo(LONG output, LONG* input) override;
  HRESULT STDMETHODCALLTYPE get_CrossbarPinInfo(BOOL isInput, LONG index, LONG* related, LONG* type) override;
  // NOLINTEND(readability-identifier-naming)

 private:
  CardState& state;
};

}  // namespace quorvex
