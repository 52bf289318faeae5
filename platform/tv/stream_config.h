// IAMStreamConfig of the card: which formats there are, and which is set.
#pragma once

#include <windows.h>

#include <strmif.h>

#include "platform/common/object_part.h"
#include "platform/tv/card_state.h"
#include "platform/tv/picture_source.h"

namespace quorvex {

class OutputPin;

class StreamConfig final : public ObjectPart<IAMStreamConfig> {
 public:
  StreamConfig(OutputPin& itsPin, PictureSource& pictures, const CardState& itsState);

  // Another rate takes effect at once. Another size or layout needs the capture pin free (else
  // VFW_E_ALREADY_CONNECTED) and is what is offered from then on.
  HRESULT STDMETHODCALLTYPE SetFormat(AM_MEDIA_TYPE* type) override;
  HRESULT STDMETHODCALLTYPE GetFormat(AM_MEDIA_TYPE** type) override;
  HRESULT STDMETHODCALLTYPE GetNumberOfCapabilities(int* count, int* size) override;
  HRESULT STDMETHODCALLTYPE GetStreamCaps(int index, AM_MEDIA_TYPE** type, BYTE* capabilities) override;

 private:
  OutputPin& pin;
  PictureSource& source;
  const CardState& state;
};

}  // namespace quorvex
