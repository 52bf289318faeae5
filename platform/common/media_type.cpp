#include "platform/common/media_type.h"

#include <windows.h>

#include <mmreg.h>
#include <objbase.h>
#include <uuids.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace quorvex {
namespace {

constexpr int kBytesPerPixel = 4;

void CopyMediaType(AM_MEDIA_TYPE& target, const AM_MEDIA_TYPE& source) {
  target = source;
  target.pbFormat = nullptr;
  if (source.pbFormat == nullptr) target.cbFormat = 0;
  if (target.cbFormat != 0) {
    target.pbFormat = static_cast<BYTE*>(::CoTaskMemAlloc(source.cbFormat));
    std::copy_n(source.pbFormat, source.cbFormat, target.pbFormat);
  }
  if (target.pUnk != nullptr) target.pUnk->AddRef();
}

bool AgreesWith(const GUID& guid, const GUID& partial) { return partial == GUID_NULL || partial == guid; }

}  // namespace

void FreeMediaType(AM_MEDIA_TYPE& type) {
  ::CoTaskMemFree(std::exchange(type.pbFormat, nullptr));
  type.cbFormat = 0;
  if (IUnknown* unknown = std::exchange(type.pUnk, nullptr)) unknown->Release();
}

MediaType::MediaType(const AM_MEDIA_TYPE& other) { CopyMediaType(type, other); }

MediaType::MediaType(MediaType&& other) noexcept : type(std::exchange(other.type, {})) {}

MediaType& MediaType::operator=(MediaType other) noexcept {
  std::swap(type, other.type);
  return *this;
}

template <typename Format>
void MediaType::SetFormat(const GUID& kind, const Format& format) {
  type.formattype = kind;
  type.cbFormat = sizeof(Format);
  type.pbFormat = static_cast<BYTE*>(::CoTaskMemAlloc(sizeof(Format)));
  std::memcpy(type.pbFormat, &format, sizeof(Format));
}

MediaType MediaType::Rgb32(int width, int height, REFERENCE_TIME frameTime) {
  VIDEOINFOHEADER format{};
  format.AvgTimePerFrame = frameTime;
  BITMAPINFOHEADER& bitmap = format.bmiHeader;
  bitmap.biSize = sizeof(BITMAPINFOHEADER);
  bitmap.biWidth = width;
  bitmap.biHeight = height;
  bitmap.biPlanes = 1;
  bitmap.biBitCount = kBytesPerPixel * 8;
  bitmap.biCompression = BI_RGB;
  bitmap.biSizeImage = static_cast<DWORD>(width) * static_cast<DWORD>(height) * kBytesPerPixel;
  MediaType made;
  made.type.majortype = MEDIATYPE_Video;
  made.type.subtype = MEDIASUBTYPE_RGB32;
  made.type.bFixedSizeSamples = TRUE;
  made.type.lSampleSize = bitmap.biSizeImage;
  made.SetFormat(FORMAT_VideoInfo, format);
  return made;
}

MediaType MediaType::Pcm16(int channels, int rate) {
  WAVEFORMATEX format{};
  format.wFormatTag = WAVE_FORMAT_PCM;
  format.nChannels = static_cast<WORD>(channels);
  format.nSamplesPerSec = static_cast<DWORD>(rate);
  format.wBitsPerSample = 16;
  format.nBlockAlign = static_cast<WORD>(channels * 2);
  format.nAvgBytesPerSec = format.nSamplesPerSec * format.nBlockAlign;
  MediaType made;
  made.type.majortype = MEDIATYPE_Audio;
  made.type.subtype = MEDIASUBTYPE_PCM;
  made.type.bFixedSizeSamples = TRUE;
  made.type.lSampleSize = format.nBlockAlign;
  made.SetFormat(FORMAT_WaveFormatEx, format);
  return made;
}

void MediaType::CopyTo(AM_MEDIA_TYPE& target) const { CopyMediaType(target, type); }

AM_MEDIA_TYPE* MediaType::Clone() const {
  auto* clone = static_cast<AM_MEDIA_TYPE*>(::CoTaskMemAlloc(sizeof(AM_MEDIA_TYPE)));
  CopyTo(*clone);
  return clone;
}

const VIDEOINFOHEADER* MediaType::Picture() const {
  if (type.formattype != FORMAT_VideoInfo || type.cbFormat < sizeof(VIDEOINFOHEADER)) return nullptr;
  return reinterpret_cast<const VIDEOINFOHEADER*>(type.pbFormat);
}

bool MediaType::Matches(const AM_MEDIA_TYPE& partial) const {
  return AgreesWith(type.majortype, partial.majortype) && AgreesWith(type.subtype, partial.subtype) &&
         AgreesWith(type.formattype, partial.formattype);
}

bool MediaType::Equals(const AM_MEDIA_TYPE& other) const {
  const MediaType copy(other);
  return type.majortype == other.majortype && type.subtype == other.subtype &&
         type.formattype == other.formattype && type.cbFormat == copy.type.cbFormat &&
         std::equal(type.pbFormat, type.pbFormat + type.cbFormat, copy.type.pbFormat);
}

bool IsComplete(const AM_MEDIA_TYPE& type) {
  return type.majortype != GUID_NULL && type.formattype != GUID_NULL;
}

}  // namespace quorvex
