// IAMStreamControl of a pin: from when to when its stream flows.
#pragma once

#include <windows.h>

#include <strmif.h>

#include <mutex>

#include "platform/common/filter_base.h"
#include "platform/common/object_part.h"
#include "platform/tv/stream_gate.h"

namespace quorvex {

class StreamControl final : public ObjectPart<IAMStreamControl> {
 public:
  StreamControl(IPin& itsPin, FilterBase& owner) : ObjectPart(itsPin), pin(itsPin), filter(owner) {}

  HRESULT STDMETHODCALLTYPE StartAt(const REFERENCE_TIME* start, DWORD cookie) override;
  HRESULT STDMETHODCALLTYPE StopAt(const REFERENCE_TIME* stop, BOOL sendExtra, DWORD cookie) override;
  HRESULT STDMETHODCALLTYPE GetInfo(AM_STREAM_INFO* info) override;

  // What was ordered counts no more: the stream flows.
  void Forget();
  // Whether a sample of this time may be delivered; tells the graph when that changes.
  bool Passes(MediaTime time);

 private:
  IPin& pin;
  FilterBase& filter;
  std::mutex lock;  // guards gate
  StreamGate gate;
};

}  // namespace quorvex
