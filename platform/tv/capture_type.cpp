#include "platform/tv/capture_type.h"

#include <uuids.h>

#include <cmath>
#include <cstdlib>

namespace quorvex {
namespace {

int BitsOf(PixelLayout layout) { return layout == PixelLayout::kRgb24 ? 24 : 16; }

std::optional<PixelLayout> LayoutOf(const AM_MEDIA_TYPE& type, const BITMAPINFOHEADER& bitmap) {
  if (type.subtype == MEDIASUBTYPE_RGB24 && bitmap.biBitCount == 24 && bitmap.biHeight > 0)
    return PixelLayout::kRgb24;
  if (type.subtype == MEDIASUBTYPE_YUY2) return PixelLayout::kYuy2;
  return std::nullopt;
}

}  // namespace

MediaType TypeOf(const CaptureFormat& format) {
  const bool rgb = format.layout == PixelLayout::kRgb24;
  const auto bytes = static_cast<DWORD>(PictureBytes(format.layout, format.size));
  VIDEOINFOHEADER picture{};
  picture.AvgTimePerFrame = format.frameTime;
  picture.dwBitRate = static_cast<DWORD>(Rescale(bytes * 8LL, kSecond, format.frameTime));
  BITMAPINFOHEADER& bitmap = picture.bmiHeader;
  bitmap.biSize = sizeof bitmap;
  bitmap.biWidth = format.size.width;
  bitmap.biHeight = format.size.height;
  bitmap.biPlanes = 1;
  bitmap.biBitCount = static_cast<WORD>(BitsOf(format.layout));
  bitmap.biCompression = rgb ? DWORD{BI_RGB} : MEDIASUBTYPE_YUY2.Data1;
  bitmap.biSizeImage = bytes;
  AM_MEDIA_TYPE type{};
  type.majortype = MEDIATYPE_Video;
  type.subtype = rgb ? MEDIASUBTYPE_RGB24 : MEDIASUBTYPE_YUY2;
  type.bFixedSizeSamples = TRUE;
  type.lSampleSize = bytes;
  type.formattype = FORMAT_VideoInfo;
  type.cbFormat = sizeof picture;
  type.pbFormat = reinterpret_cast<BYTE*>(&picture);
  return MediaType(type);
}

std::optional<CaptureFormat> FormatOf(const AM_MEDIA_TYPE& type, MediaTime usual) {
  const MediaType copy(type);
  const VIDEOINFOHEADER* picture = copy.Picture();
  if (picture == nullptr || type.majortype != MEDIATYPE_Video) return std::nullopt;
  const BITMAPINFOHEADER& bitmap = picture->bmiHeader;
  const std::optional<PixelLayout> layout = LayoutOf(type, bitmap);
  if (!layout) return std::nullopt;
  const CaptureFormat format{*layout,
                             {static_cast<int>(bitmap.biWidth), std::abs(static_cast<int>(bitmap.biHeight))},
                             picture->AvgTimePerFrame > 0 ? picture->AvgTimePerFrame : usual};
  return IsPossible(format) ? std::optional(format) : std::nullopt;
}

}  // namespace quorvex
