// IAMDroppedFrames of a pin: how many pictures were delivered and which were lost. Other programs see the
// counts too, in the state that all cards share.
#pragma once

#include <windows.h>

#include <strmif.h>

#include <mutex>
#include <vector>

#include "platform/common/object_part.h"
#include "platform/tv/card_state.h"

namespace quorvex {

class DroppedFrames final : public ObjectPart<IAMDroppedFrames> {
 public:
  DroppedFrames(IUnknown& pin, StreamCounts& shared) : ObjectPart(pin), told(shared) {}

  HRESULT STDMETHODCALLTYPE GetNumDropped(LONG* number) override;
  HRESULT STDMETHODCALLTYPE GetNumNotDropped(LONG* number) override;
  HRESULT STDMETHODCALLTYPE GetDroppedInfo(LONG size, LONG* numbers, LONG* copied) override;
  HRESULT STDMETHODCALLTYPE GetAverageFrameSize(LONG* bytes) override;

  // A new stream begins.
  void Clear();
  void CountDelivered(std::size_t bytes);
  // `count` pictures from this number on.
  void CountLost(std::int64_t first, std::int64_t count);

 private:
  StreamCounts& told;
  std::mutex lock;  // guards what follows
  std::int64_t delivered = 0;
  std::int64_t bytesDelivered = 0;
  std::int64_t lost = 0;
  std::vector<LONG> firstLost;  // the numbers of the first ones lost
};

}  // namespace quorvex
