#include "platform/tv/preview_pin.h"

#include <uuids.h>

namespace quorvex {

PreviewPin::PreviewPin(FilterBase& owner, LiveDevice& itsDevice, PictureSource& pictures, CardState& state)
    : LivePin(owner, itsDevice, L"Preview", PIN_CATEGORY_PREVIEW),
      source(pictures),
      delivery(*this),
      control(*this, owner),
      counts(*this, state.preview) {}

void* PreviewPin::Find(REFIID iid) {
  if (iid == __uuidof(IAMStreamControl)) return static_cast<IAMStreamControl*>(&control);
  if (iid == __uuidof(IAMDroppedFrames)) return static_cast<IAMDroppedFrames*>(&counts);
  return LivePin::Find(iid);
}

std::vector<MediaType> PreviewPin::Types() {
  const CaptureFormat format = source.Format();
  return {MediaType::Rgb32(format.size.width, format.size.height, format.frameTime)};
}

ALLOCATOR_PROPERTIES PreviewPin::BufferNeeds(const MediaType& type) {
  constexpr long kBuffers = 2;  // one is shown while the next is drawn
  return {kBuffers, static_cast<long>(type.Get().lSampleSize), 1, 0};
}

void PreviewPin::OnBegin() {
  delivery.Begin();
  counts.Clear();
}

void PreviewPin::Send(const FramePacer::Frame& frame) {
  if (!control.Passes(frame.begin)) return;
  if (frame.lost > 0 && !delivery.IsFirst()) counts.CountLost(frame.number - frame.lost, frame.lost);
  std::size_t bytes = 0;
  const Fed fed = delivery.Deliver({{frame.begin, frame.end}}, [&](const PictureView& view) {
    picture.Draw(view, source, frame.number, AirTimeOf(frame.begin));
    bytes = static_cast<std::size_t>(view.width) * static_cast<std::size_t>(view.height) * 4;
    return true;
  });
  if (fed == Fed::kMore) counts.CountDelivered(bytes);
}

}  // namespace quorvex
