#include "platform/tv/mux_format.h"

#include <ddraw.h>
#include <mmreg.h>
#include <uuids.h>

#include <amvideo.h>

#include <cstdlib>
#include <cstring>

#include "platform/avi/stream_rate.h"

namespace quorvex {
namespace {

// Codings are four letters; below are the platform's numbers for plain layouts.
constexpr DWORD kPlainCodings = 256;
constexpr UnitRate kUnknownRate{25, 1};

std::optional<MuxFormat> PicturesOf(const AM_MEDIA_TYPE& type) {
  if (type.formattype != FORMAT_VideoInfo || type.cbFormat < sizeof(VIDEOINFOHEADER)) return std::nullopt;
  VIDEOINFOHEADER header{};
  std::memcpy(&header, type.pbFormat, sizeof header);
  const BITMAPINFOHEADER& bitmap = header.bmiHeader;
  AviStream stream;
  stream.kind = StreamKind::kPictures;
  stream.handler = bitmap.biCompression < kPlainCodings ? 0 : bitmap.biCompression;
  stream.rate = header.AvgTimePerFrame > 0 ? PictureRate(header.AvgTimePerFrame) : kUnknownRate;
  stream.width = static_cast<std::uint16_t>(bitmap.biWidth);
  stream.height = static_cast<std::uint16_t>(std::abs(bitmap.biHeight));
  stream.format.assign(type.pbFormat + offsetof(VIDEOINFOHEADER, bmiHeader), type.pbFormat + type.cbFormat);
  return MuxFormat{stream, std::nullopt};
}

std::optional<MuxFormat> SoundOf(const AM_MEDIA_TYPE& type) {
  if (type.formattype != FORMAT_WaveFormatEx || type.cbFormat < sizeof(PCMWAVEFORMAT)) return std::nullopt;
  WAVEFORMATEX wave{};
  std::memcpy(&wave, type.pbFormat, sizeof(PCMWAVEFORMAT));
  if (wave.nBlockAlign == 0 || wave.nAvgBytesPerSec == 0) return std::nullopt;
  const bool plain = wave.wFormatTag == WAVE_FORMAT_PCM;
  AviStream stream;
  stream.kind = StreamKind::kSound;
  stream.rate = plain && wave.nSamplesPerSec > 0 ? UnitRate{wave.nSamplesPerSec, 1}
                                                 : UnitRate{wave.nAvgBytesPerSec, wave.nBlockAlign};
  stream.unitBytes = wave.nBlockAlign;
  stream.format.assign(type.pbFormat, type.pbFormat + type.cbFormat);
  const std::uint8_t silence = wave.wBitsPerSample == 8 ? 0x80 : 0;
  return MuxFormat{stream, plain ? std::optional(silence) : std::nullopt};
}

}  // namespace

std::optional<MuxFormat> MuxFormatOf(const AM_MEDIA_TYPE& type) {
  std::optional<MuxFormat> format;
  if (type.pbFormat == nullptr) return format;
  if (type.majortype == MEDIATYPE_Video) format = PicturesOf(type);
  if (type.majortype == MEDIATYPE_Audio) format = SoundOf(type);
  if (format && format->stream.format.size() > kMostFormatBytes) format.reset();
  return format;
}

}  // namespace quorvex
