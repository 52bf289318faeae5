#include "platform/tv/caption_stream.h"

#include <windows.h>

#include <uuids.h>

#include <cstring>

namespace quorvex {
namespace {

// The platform's KSDATAFORMAT_SUBTYPE_CC: line 21 as a card's hardware has read it.
constexpr GUID kClosedCaptions = {
    0x33214cc1, 0x011f, 0x11d2, {0xb4, 0xb1, 0x00, 0xa0, 0xd1, 0x02, 0xcf, 0xbe}};
constexpr GUID kCaptionScreens = {
    0x5c0a1f30, 0x7e54, 0x4a2b, {0x9f, 0x61, 0x2d, 0x8e, 0x47, 0xb3, 0x10, 0x20}};

MediaType DataType(const GUID& major, const GUID& subtype, std::size_t bytes) {
  AM_MEDIA_TYPE type{};
  type.majortype = major;
  type.subtype = subtype;
  type.formattype = FORMAT_None;
  type.bFixedSizeSamples = TRUE;
  type.bTemporalCompression = FALSE;
  type.lSampleSize = static_cast<ULONG>(bytes);
  return MediaType(type);
}

}  // namespace

MediaType VbiType() { return DataType(MEDIATYPE_VBI, kClosedCaptions, kPairBytes); }
MediaType BytePairType() {
  return DataType(MEDIATYPE_AUXLine21Data, MEDIASUBTYPE_Line21_BytePair, kPairBytes);
}
MediaType CaptionsType() { return DataType(MEDIATYPE_AUXLine21Data, kCaptionScreens, sizeof(ShownCaptions)); }

bool IsOfKind(const AM_MEDIA_TYPE& type, const MediaType& kind) {
  return type.majortype == kind.Get().majortype && type.subtype == kind.Get().subtype;
}

SampleBytes BytesOf(IMediaSample& sample) {
  BYTE* data = nullptr;
  if (FAILED(sample.GetPointer(&data))) return {};
  return {data, static_cast<std::size_t>(sample.GetActualDataLength())};
}

bool FillSample(IMediaSample& sample, const void* bytes, std::size_t size) {
  BYTE* target = nullptr;
  if (FAILED(sample.GetPointer(&target)) || static_cast<std::size_t>(sample.GetSize()) < size) return false;
  std::memcpy(target, bytes, size);
  return SUCCEEDED(sample.SetActualDataLength(static_cast<long>(size)));
}

}  // namespace quorvex
