// IAMStreamConfig of the line input: plain sound of 8 or 16 bits, one or two channels, at the usual rates.
#pragma once

#include <windows.h>

#include <strmif.h>

#include <mutex>
#include <optional>

#include "platform/common/media_type.h"
#include "platform/common/object_part.h"
#include "platform/common/wave_format.h"

namespace quorvex {

class OutputPin;

MediaType SoundTypeOf(const WaveFormat& format);
// None for a format that the line input does not have.
std::optional<WaveFormat> SoundFormatOf(const AM_MEDIA_TYPE& type);

class LineConfig final : public ObjectPart<IAMStreamConfig> {
 public:
  explicit LineConfig(OutputPin& itsPin);

  // VFW_E_ALREADY_CONNECTED for another format while the pin is connected.
  HRESULT STDMETHODCALLTYPE SetFormat(AM_MEDIA_TYPE* type) override;
  HRESULT STDMETHODCALLTYPE GetFormat(AM_MEDIA_TYPE** type) override;
  HRESULT STDMETHODCALLTYPE GetNumberOfCapabilities(int* count, int* size) override;
  HRESULT STDMETHODCALLTYPE GetStreamCaps(int index, AM_MEDIA_TYPE** type, BYTE* capabilities) override;

  [[nodiscard]] WaveFormat Format();

 private:
  OutputPin& pin;
  std::mutex lock;  // guards format
  WaveFormat format;
};

}  // namespace quorvex
