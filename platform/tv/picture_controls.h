// IAMVideoProcAmp of the card: brightness, contrast, hue and saturation.
#pragma once

#include <windows.h>

#include <strmif.h>

#include "platform/common/object_part.h"
#include "platform/tv/picture_source.h"

namespace quorvex {

class PictureControls final : public ObjectPart<IAMVideoProcAmp> {
 public:
  PictureControls(IUnknown& filter, PictureSource& pictures) : ObjectPart(filter), source(pictures) {}

  HRESULT STDMETHODCALLTYPE GetRange(LONG property, LONG* lowest, LONG* highest, LONG* step, LONG* usual,
                                     LONG* flags) override;
  // E_INVALIDARG for a value out of range, which changes nothing.
  HRESULT STDMETHODCALLTYPE Set(LONG property, LONG value, LONG flags) override;
  HRESULT STDMETHODCALLTYPE Get(LONG property, LONG* value, LONG* flags) override;

 private:
  PictureSource& source;
};

}  // namespace quorvex
