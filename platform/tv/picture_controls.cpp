#include "platform/tv/picture_controls.h"

#include "platform/common/answer.h"

namespace quorvex {
namespace {

constexpr HRESULT kNoSuchProperty = HRESULT_FROM_WIN32(ERROR_NOT_SUPPORTED);

// The four are the first of VideoProcAmpProperty, in the order of ColorAdjustment.
bool IsControl(LONG property) {
  return property >= VideoProcAmp_Brightness && property <= VideoProcAmp_Saturation;
}

}  // namespace

HRESULT PictureControls::GetRange(LONG property, LONG* lowest, LONG* highest, LONG* step, LONG* usual,
                                  LONG* flags) {
  if (!IsControl(property)) return kNoSuchProperty;
  if (lowest == nullptr || highest == nullptr || step == nullptr || usual == nullptr) return E_POINTER;
  *lowest = ColorAdjustment::kLowest;
  *highest = ColorAdjustment::kHighest;
  *step = 1;
  *usual = ColorAdjustment::kMiddle;
  return Answer(flags, VideoProcAmp_Flags_Manual);
}

HRESULT PictureControls::Set(LONG property, LONG value, LONG) {
  if (!IsControl(property)) return kNoSuchProperty;
  if (value < ColorAdjustment::kLowest || value > ColorAdjustment::kHighest) return E_INVALIDARG;
  source.Adjust(static_cast<std::size_t>(property), value);
  return S_OK;
}

HRESULT PictureControls::Get(LONG property, LONG* value, LONG* flags) {
  if (!IsControl(property)) return kNoSuchProperty;
  if (flags == nullptr) return E_POINTER;
  *flags = VideoProcAmp_Flags_Manual;
  return Answer(value, source.Adjustment().values[static_cast<std::size_t>(property)]);
}

}  // namespace quorvex
