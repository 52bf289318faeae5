#include "platform/tv/stream_config.h"

#include <uuids.h>
#include <vfwmsgs.h>

#include <cstring>

#include "platform/common/answer.h"
#include "platform/common/output_pin.h"
#include "platform/tv/capture_type.h"

namespace quorvex {
namespace {

constexpr std::array kLayouts{PixelLayout::kRgb24, PixelLayout::kYuy2};
constexpr int kFormats = static_cast<int>(kCaptureSizes.size() * kLayouts.size());

enum FormatFault : std::uint32_t { kFails = 1, kOtherKind = 2, kEmpty = 3 };

VIDEO_STREAM_CONFIG_CAPS CapabilitiesOf(const CaptureFormat& format) {
  const SIZE size{format.size.width, format.size.height};
  const auto bits = static_cast<LONGLONG>(PictureBytes(format.layout, format.size)) * 8;
  VIDEO_STREAM_CONFIG_CAPS told{};
  told.guid = FORMAT_VideoInfo;
  told.VideoStandard = AnalogVideo_NTSC_M;
  told.InputSize = told.MinCroppingSize = told.MaxCroppingSize = size;
  told.MinOutputSize = told.MaxOutputSize = size;
  told.CropGranularityX = told.CropGranularityY = told.CropAlignX = told.CropAlignY = 1;
  told.MinFrameInterval = kShortestFrame;
  told.MaxFrameInterval = kLongestFrame;
  told.MinBitsPerSecond = static_cast<LONG>(Rescale(bits, kSecond, kLongestFrame));
  told.MaxBitsPerSecond = static_cast<LONG>(Rescale(bits, kSecond, kShortestFrame));
  return told;
}

}  // namespace

StreamConfig::StreamConfig(OutputPin& itsPin, PictureSource& pictures, const CardState& itsState)
    : ObjectPart(itsPin), pin(itsPin), source(pictures), state(itsState) {}

HRESULT StreamConfig::SetFormat(AM_MEDIA_TYPE* type) {
  if (type == nullptr) return E_POINTER;
  if (state.refuseFormat != 0) return E_FAIL;
  const CaptureFormat before = source.Format();
  const std::optional<CaptureFormat> wanted = FormatOf(*type, before.frameTime);
  if (!wanted) return VFW_E_INVALIDMEDIATYPE;
  const bool other = wanted->size != before.size || wanted->layout != before.layout;
  if (other && pin.IsConnected()) return VFW_E_ALREADY_CONNECTED;
  source.SetFormat(*wanted);
  return S_OK;
}

HRESULT StreamConfig::GetFormat(AM_MEDIA_TYPE** type) {
  if (type == nullptr) return E_POINTER;
  const std::uint32_t fault = state.formatFault;
  if (fault == kFails) return E_FAIL;
  CaptureFormat format = source.Format();
  if (fault == kEmpty) format.size = {0, 0};
  *type = TypeOf(format).Clone();
  if (fault == kOtherKind) (*type)->formattype = FORMAT_MPEGVideo;
  return S_OK;
}

HRESULT StreamConfig::GetNumberOfCapabilities(int* count, int* size) {
  if (size == nullptr) return E_POINTER;
  *size = sizeof(VIDEO_STREAM_CONFIG_CAPS);
  return Answer(count, kFormats);
}

HRESULT StreamConfig::GetStreamCaps(int index, AM_MEDIA_TYPE** type, BYTE* capabilities) {
  if (index < 0) return E_INVALIDARG;
  if (index >= kFormats) return S_FALSE;
  if (type == nullptr || capabilities == nullptr) return E_POINTER;
  const auto at = static_cast<std::size_t>(index);
  const CaptureFormat format{kLayouts[at / kCaptureSizes.size()], kCaptureSizes[at % kCaptureSizes.size()],
                             CaptureFormat{}.frameTime};
  const VIDEO_STREAM_CONFIG_CAPS told = CapabilitiesOf(format);
  std::memcpy(capabilities, &told, sizeof told);
  *type = TypeOf(format).Clone();
  return S_OK;
}

}  // namespace quorvex
