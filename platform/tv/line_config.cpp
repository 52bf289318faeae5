#include "platform/tv/line_config.h"

#include <windows.h>

#include <mmreg.h>
#include <uuids.h>
#include <vfwmsgs.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "platform/common/answer.h"
#include "platform/common/output_pin.h"
#include "platform/common/wave_output.h"

namespace quorvex {
namespace {

constexpr std::array kFormats{WaveFormat{44100, 2, 16}, WaveFormat{44100, 1, 16}, WaveFormat{48000, 2, 16},
                              WaveFormat{48000, 1, 16}, WaveFormat{22050, 2, 16}, WaveFormat{22050, 1, 16},
                              WaveFormat{11025, 2, 16}, WaveFormat{11025, 1, 16}, WaveFormat{44100, 2, 8},
                              WaveFormat{44100, 1, 8},  WaveFormat{22050, 2, 8},  WaveFormat{22050, 1, 8},
                              WaveFormat{11025, 2, 8},  WaveFormat{11025, 1, 8}};

AUDIO_STREAM_CONFIG_CAPS CapabilitiesOf(const WaveFormat& format) {
  AUDIO_STREAM_CONFIG_CAPS told{};
  told.guid = MEDIATYPE_Audio;
  told.MinimumChannels = told.MaximumChannels = static_cast<ULONG>(format.channels);
  told.MinimumBitsPerSample = told.MaximumBitsPerSample = static_cast<ULONG>(format.bits);
  told.MinimumSampleFrequency = told.MaximumSampleFrequency = static_cast<ULONG>(format.rate);
  told.ChannelsGranularity = told.BitsPerSampleGranularity = told.SampleFrequencyGranularity = 1;
  return told;
}

}  // namespace

MediaType SoundTypeOf(const WaveFormat& format) {
  WAVEFORMATEX wave = PlatformFormat(format);
  AM_MEDIA_TYPE type{};
  type.majortype = MEDIATYPE_Audio;
  type.subtype = MEDIASUBTYPE_PCM;
  type.bFixedSizeSamples = TRUE;
  type.lSampleSize = wave.nBlockAlign;
  type.formattype = FORMAT_WaveFormatEx;
  type.cbFormat = sizeof wave;
  type.pbFormat = reinterpret_cast<BYTE*>(&wave);
  return MediaType(type);
}

std::optional<WaveFormat> SoundFormatOf(const AM_MEDIA_TYPE& type) {
  WAVEFORMATEX wave{};
  if (type.majortype != MEDIATYPE_Audio || type.formattype != FORMAT_WaveFormatEx ||
      type.cbFormat < sizeof(PCMWAVEFORMAT) || type.pbFormat == nullptr)
    return std::nullopt;
  std::memcpy(&wave, type.pbFormat, sizeof(PCMWAVEFORMAT));
  const WaveFormat format{static_cast<int>(wave.nSamplesPerSec), wave.nChannels, wave.wBitsPerSample};
  const bool known = wave.wFormatTag == WAVE_FORMAT_PCM &&
                     std::find(kFormats.begin(), kFormats.end(), format) != kFormats.end();
  return known ? std::optional(format) : std::nullopt;
}

LineConfig::LineConfig(OutputPin& itsPin) : ObjectPart(itsPin), pin(itsPin) {}

WaveFormat LineConfig::Format() {
  const std::scoped_lock guard(lock);
  return format;
}

HRESULT LineConfig::SetFormat(AM_MEDIA_TYPE* type) {
  if (type == nullptr) return E_POINTER;
  const std::optional<WaveFormat> wanted = SoundFormatOf(*type);
  if (!wanted) return VFW_E_INVALIDMEDIATYPE;
  if (*wanted != Format() && pin.IsConnected()) return VFW_E_ALREADY_CONNECTED;
  const std::scoped_lock guard(lock);
  format = *wanted;
  return S_OK;
}

HRESULT LineConfig::GetFormat(AM_MEDIA_TYPE** type) {
  if (type == nullptr) return E_POINTER;
  *type = SoundTypeOf(Format()).Clone();
  return S_OK;
}

HRESULT LineConfig::GetNumberOfCapabilities(int* count, int* size) {
  if (size == nullptr) return E_POINTER;
  *size = sizeof(AUDIO_STREAM_CONFIG_CAPS);
  return Answer(count, kFormats.size());
}

HRESULT LineConfig::GetStreamCaps(int index, AM_MEDIA_TYPE** type, BYTE* capabilities) {
  if (index < 0) return E_INVALIDARG;
  if (static_cast<std::size_t>(index) >= kFormats.size()) return S_FALSE;
  if (type == nullptr || capabilities == nullptr) return E_POINTER;
  const WaveFormat& told = kFormats[static_cast<std::size_t>(index)];
  const AUDIO_STREAM_CONFIG_CAPS caps = CapabilitiesOf(told);
  std::memcpy(capabilities, &caps, sizeof caps);
  *type = SoundTypeOf(told).Clone();
  return S_OK;
}

}  // namespace quorvex
