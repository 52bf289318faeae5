#include "devices/tv/pin_format.h"

#include <uuids.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>

#include "devices/tv/frame_rate.h"
#include "panel/main_window.h"

namespace quorvex {

HRESULT PinFormat::Read(IAMStreamConfig& pin) {
  Free();
  const HRESULT result = pin.GetFormat(&type);
  if (FAILED(result)) type = nullptr;
  return result;
}

VIDEOINFOHEADER* PinFormat::Picture() const {
  const bool plain = type != nullptr && type->formattype == FORMAT_VideoInfo && type->pbFormat != nullptr &&
                     type->cbFormat >= sizeof(VIDEOINFOHEADER);
  return plain ? reinterpret_cast<VIDEOINFOHEADER*>(type->pbFormat) : nullptr;
}

// A height is negative where the picture's lines go from the top down.
Size PinFormat::PictureSize() const {
  const VIDEOINFOHEADER* const picture = Picture();
  if (picture == nullptr) return {};
  const std::int64_t height = std::abs(std::int64_t{picture->bmiHeader.biHeight});
  if (picture->bmiHeader.biWidth <= 0 || height > std::numeric_limits<int>::max()) return {};
  return {picture->bmiHeader.biWidth, static_cast<int>(height)};
}

std::span<const BYTE> PinFormat::Block() const {
  if (type == nullptr || type->pbFormat == nullptr) return {};
  return {type->pbFormat, type->cbFormat};
}

bool PinFormat::SetBlock(std::span<const BYTE> bytes) {
  auto* const block = static_cast<BYTE*>(::CoTaskMemAlloc(bytes.size()));
  if (block == nullptr) return false;
  std::copy(bytes.begin(), bytes.end(), block);
  ::CoTaskMemFree(type->pbFormat);
  type->pbFormat = block;
  type->cbFormat = static_cast<ULONG>(bytes.size());
  return true;
}

void PinFormat::Free() {
  if (type == nullptr) return;
  ::CoTaskMemFree(type->pbFormat);
  if (type->pUnk != nullptr) type->pUnk->Release();
  ::CoTaskMemFree(type);
  type = nullptr;
}

HRESULT ApplyFrameRate(IAMStreamConfig& pin, double framesPerSecond, const char* message) {
  PinFormat format;
  const HRESULT read = format.Read(pin);
  if (read != S_OK || format.Picture() == nullptr) return read;
  format.Picture()->AvgTimePerFrame = FrameTimeOf(framesPerSecond);
  const HRESULT set = pin.SetFormat(format.Get());
  if (FAILED(set)) ReportError(message);
  return set;
}

}  // namespace quorvex
