#include "platform/tv/mux_settings.h"

#include <uuids.h>
#include <vfwmsgs.h>

#include "platform/common/answer.h"

namespace quorvex {

HRESULT MuxSettings::SetMasterStream(LONG stream) {
  if (stream < AviRecorder::kNoMaster || stream >= static_cast<LONG>(kMostStreams)) return E_INVALIDARG;
  if (filter.State() != State_Stopped) return VFW_E_NOT_STOPPED;
  master = static_cast<int>(stream);
  return S_OK;
}

HRESULT MuxSettings::GetMasterStream(LONG* stream) { return Answer(stream, master.load()); }

HRESULT MuxSettings::SetOutputCompatibilityIndex(BOOL wanted) {
  if (filter.State() != State_Stopped) return VFW_E_NOT_STOPPED;
  oldIndex = wanted != FALSE;
  return S_OK;
}

HRESULT MuxSettings::GetOutputCompatibilityIndex(BOOL* wanted) { return Answer(wanted, oldIndex.load()); }

HRESULT Interleaving::put_Mode(InterleavingMode wanted) {
  if (wanted < INTERLEAVE_NONE || wanted > INTERLEAVE_NONE_BUFFERED) return E_INVALIDARG;
  mode = wanted;
  return S_OK;
}

HRESULT Interleaving::get_Mode(InterleavingMode* told) { return Answer(told, mode.load()); }

HRESULT Interleaving::put_Interleaving(const REFERENCE_TIME* interleave, const REFERENCE_TIME* preroll) {
  if (interleave == nullptr || preroll == nullptr) return E_POINTER;
  if (*interleave <= 0 || *preroll < 0) return E_INVALIDARG;
  interval = *interleave;
  lead = *preroll;
  return S_OK;
}

HRESULT Interleaving::get_Interleaving(REFERENCE_TIME* interleave, REFERENCE_TIME* preroll) {
  const HRESULT result = Answer(interleave, interval.load());
  return SUCCEEDED(result) ? Answer(preroll, lead.load()) : result;
}

HRESULT RecordedPosition::GetCapabilities(DWORD* capabilities) {
  return Answer(capabilities, AM_SEEKING_CanGetCurrentPos);
}

HRESULT RecordedPosition::CheckCapabilities(DWORD* capabilities) {
  if (capabilities == nullptr) return E_POINTER;
  const DWORD wanted = *capabilities;
  *capabilities &= AM_SEEKING_CanGetCurrentPos;
  return *capabilities == wanted ? S_OK : *capabilities != 0 ? S_FALSE : E_FAIL;
}

HRESULT RecordedPosition::IsFormatSupported(const GUID* format) {
  if (format == nullptr) return E_POINTER;
  return *format == TIME_FORMAT_MEDIA_TIME ? S_OK : S_FALSE;
}

HRESULT RecordedPosition::QueryPreferredFormat(GUID* format) {
  return Answer(format, TIME_FORMAT_MEDIA_TIME);
}

HRESULT RecordedPosition::SetTimeFormat(const GUID* format) {
  const HRESULT result = IsFormatSupported(format);
  return result == S_FALSE ? E_INVALIDARG : result;
}

HRESULT RecordedPosition::GetCurrentPosition(LONGLONG* told) { return Answer(told, length()); }

}  // namespace quorvex
