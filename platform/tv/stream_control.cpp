#include "platform/tv/stream_control.h"

#include <evcode.h>

namespace quorvex {

HRESULT StreamControl::StartAt(const REFERENCE_TIME* start, DWORD cookie) {
  const std::scoped_lock guard(lock);
  gate.StartAt(start != nullptr ? *start : StreamGate::kNow, cookie);
  return S_OK;
}

HRESULT StreamControl::StopAt(const REFERENCE_TIME* stop, BOOL, DWORD cookie) {
  const std::scoped_lock guard(lock);
  gate.StopAt(stop != nullptr ? *stop : StreamGate::kNow, cookie);
  return S_OK;
}

HRESULT StreamControl::GetInfo(AM_STREAM_INFO* info) {
  if (info == nullptr) return E_POINTER;
  const std::scoped_lock guard(lock);
  *info = {};
  if (!gate.IsOpen()) info->dwFlags |= AM_STREAM_INFO_DISCARDING;
  if (const auto& start = gate.Start()) {
    info->dwFlags |= AM_STREAM_INFO_START_DEFINED;
    info->tStart = start->time;
    info->dwStartCookie = start->cookie;
  }
  if (const auto& stop = gate.Stop()) {
    info->dwFlags |= AM_STREAM_INFO_STOP_DEFINED;
    info->tStop = stop->time;
    info->dwStopCookie = stop->cookie;
  }
  return S_OK;
}

void StreamControl::Forget() {
  const std::scoped_lock guard(lock);
  gate = {};
}

bool StreamControl::Passes(MediaTime time) {
  std::unique_lock guard(lock);
  const std::optional<StreamGate::Turned> turned = gate.Pass(time);
  const bool open = gate.IsOpen();
  guard.unlock();
  if (turned) {
    filter.Tell(turned->open ? EC_STREAM_CONTROL_STARTED : EC_STREAM_CONTROL_STOPPED,
                reinterpret_cast<LONG_PTR>(&pin), static_cast<LONG_PTR>(turned->cookie));
  }
  return open;
}

}  // namespace quorvex
