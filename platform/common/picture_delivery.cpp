#include "platform/common/picture_delivery.h"

#include <cstdlib>

namespace quorvex {
namespace {

// What the pixels take, whatever biSizeImage says: it may be 0.
std::size_t BytesOf(const BITMAPINFOHEADER& bitmap) {
  return static_cast<std::size_t>(bitmap.biWidth) * static_cast<std::size_t>(std::abs(bitmap.biHeight)) * 4;
}

// A positive height means that the bottom line comes first.
PictureView ViewOf(BYTE* buffer, const VIDEOINFOHEADER& picture) {
  const BITMAPINFOHEADER& bitmap = picture.bmiHeader;
  const int height = std::abs(bitmap.biHeight);
  const std::ptrdiff_t line = static_cast<std::ptrdiff_t>(bitmap.biWidth) * 4;
  const RECT& part = picture.rcTarget;  // of a buffer that is wider than the picture
  const int width = part.right > part.left ? part.right - part.left : bitmap.biWidth;
  if (bitmap.biHeight < 0) return {buffer, line, width, height};
  return {buffer + line * (height - 1), -line, width, height};
}

}  // namespace

void PictureDelivery::Begin() {
  first = true;
  type = pin.AgreedType();
}

bool PictureDelivery::Open(IMediaSample& sample, PictureView& view) {
  // The other end may ask for another layout of the buffer, with this very sample.
  if (AM_MEDIA_TYPE* changed = nullptr; sample.GetMediaType(&changed) == S_OK) {
    type = MediaType(*changed);
    pin.Adopt(type);
    FreeMediaType(*changed);
    ::CoTaskMemFree(changed);
  }
  BYTE* target = nullptr;
  const VIDEOINFOHEADER* picture = type.Picture();
  if (FAILED(sample.GetPointer(&target)) || picture == nullptr) return false;
  if (static_cast<std::size_t>(sample.GetSize()) < BytesOf(picture->bmiHeader)) return false;
  view = ViewOf(target, *picture);
  return true;
}

Fed PictureDelivery::Send(IMediaSample& sample, std::optional<Times> times) {
  sample.SetActualDataLength(static_cast<long>(BytesOf(type.Picture()->bmiHeader)));
  sample.SetTime(times ? &times->begin : nullptr, times ? &times->end : nullptr);
  sample.SetSyncPoint(TRUE);
  sample.SetPreroll(FALSE);
  sample.SetDiscontinuity(first ? TRUE : FALSE);
  first = false;
  return pin.Deliver(&sample) == S_OK ? Fed::kMore : Fed::kRefused;
}

}  // namespace quorvex
