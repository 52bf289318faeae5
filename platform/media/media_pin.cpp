#include "platform/media/media_pin.h"

#include <uuids.h>
#include <windows.h>

#include <algorithm>
#include <optional>
#include <utility>

namespace quorvex {
namespace {

constexpr DWORD kCapabilities = AM_SEEKING_CanSeekAbsolute | AM_SEEKING_CanSeekForwards |
                                AM_SEEKING_CanSeekBackwards | AM_SEEKING_CanGetCurrentPos |
                                AM_SEEKING_CanGetStopPos | AM_SEEKING_CanGetDuration;

DWORD How(DWORD flags) { return flags & AM_SEEKING_PositioningBitsMask; }

// A position of SetPositions; nothing when it changes none.
std::optional<SeekWish::Place> Asked(const LONGLONG* position, DWORD flags) {
  if (How(flags) == AM_SEEKING_NoPositioning || position == nullptr) return std::nullopt;
  return SeekWish::Place{*position, How(flags) != AM_SEEKING_AbsolutePositioning};
}

bool IsMediaTime(const GUID* format) { return format == nullptr || *format == TIME_FORMAT_MEDIA_TIME; }

}  // namespace

MediaPin::MediaPin(FilterBase& owner, Seekable& source, int number, const wchar_t* id, MediaType offered,
                   ALLOCATOR_PROPERTIES buffers)
    : OutputPin(owner, id), sought(source), place(number), type(std::move(offered)), needs(buffers) {}

HRESULT MediaPin::GetCapabilities(DWORD* capabilities) {
  if (capabilities == nullptr) return E_POINTER;
  *capabilities = kCapabilities;
  return S_OK;
}

HRESULT MediaPin::CheckCapabilities(DWORD* capabilities) {
  if (capabilities == nullptr) return E_POINTER;
  const DWORD asked = std::exchange(*capabilities, *capabilities & kCapabilities);
  if (*capabilities == asked) return S_OK;
  return *capabilities != 0 ? S_FALSE : E_FAIL;
}

HRESULT MediaPin::IsFormatSupported(const GUID* format) {
  if (format == nullptr) return E_POINTER;
  return *format == TIME_FORMAT_MEDIA_TIME ? S_OK : S_FALSE;
}

HRESULT MediaPin::QueryPreferredFormat(GUID* format) { return GetTimeFormat(format); }

HRESULT MediaPin::GetTimeFormat(GUID* format) {
  if (format == nullptr) return E_POINTER;
  *format = TIME_FORMAT_MEDIA_TIME;
  return S_OK;
}

HRESULT MediaPin::IsUsingTimeFormat(const GUID* format) { return IsFormatSupported(format); }

HRESULT MediaPin::SetTimeFormat(const GUID* format) {
  if (format == nullptr) return E_POINTER;
  return *format == TIME_FORMAT_MEDIA_TIME ? S_OK : E_INVALIDARG;
}

HRESULT MediaPin::GetDuration(LONGLONG* duration) {
  if (duration == nullptr) return E_POINTER;
  *duration = sought.Duration();
  return S_OK;
}

HRESULT MediaPin::GetStopPosition(LONGLONG* stop) {
  if (stop == nullptr) return E_POINTER;
  *stop = std::min(sought.Played().stop, sought.Duration());
  return S_OK;
}

HRESULT MediaPin::GetCurrentPosition(LONGLONG* current) {
  if (current == nullptr) return E_POINTER;
  *current = sought.Position();
  return S_OK;
}

HRESULT MediaPin::ConvertTimeFormat(LONGLONG* target, const GUID* targetFormat, LONGLONG source,
                                    const GUID* sourceFormat) {
  if (target == nullptr) return E_POINTER;
  if (!IsMediaTime(targetFormat) || !IsMediaTime(sourceFormat)) return E_INVALIDARG;
  *target = source;
  return S_OK;
}

HRESULT MediaPin::SetPositions(LONGLONG* current, DWORD currentFlags, LONGLONG* stop, DWORD stopFlags) {
  if (How(currentFlags) == AM_SEEKING_IncrementalPositioning) return E_INVALIDARG;
  const SeekWish wish{Asked(current, currentFlags), Asked(stop, stopFlags),
                      How(stopFlags) == AM_SEEKING_IncrementalPositioning};
  if (wish.start || wish.stop) sought.SeekTo(place, wish);
  if ((currentFlags & AM_SEEKING_ReturnTime) != 0 && current != nullptr) *current = sought.Position();
  if ((stopFlags & AM_SEEKING_ReturnTime) != 0 && stop != nullptr) return GetStopPosition(stop);
  return S_OK;
}

HRESULT MediaPin::GetPositions(LONGLONG* current, LONGLONG* stop) {
  if (current != nullptr) *current = sought.Position();
  if (stop != nullptr) *stop = std::min(sought.Played().stop, sought.Duration());
  return S_OK;
}

HRESULT MediaPin::GetAvailable(LONGLONG* earliest, LONGLONG* latest) {
  if (earliest != nullptr) *earliest = 0;
  if (latest != nullptr) *latest = sought.Duration();
  return S_OK;
}

HRESULT MediaPin::SetRate(double rate) { return rate == 1.0 ? S_OK : E_INVALIDARG; }

HRESULT MediaPin::GetRate(double* rate) {
  if (rate == nullptr) return E_POINTER;
  *rate = 1.0;
  return S_OK;
}

HRESULT MediaPin::GetPreroll(LONGLONG* preroll) {
  if (preroll == nullptr) return E_POINTER;
  *preroll = 0;
  return S_OK;
}

}  // namespace quorvex
