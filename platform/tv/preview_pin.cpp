#include "platform/tv/preview_pin.h"

#include <uuids.h>

namespace quorvex {

PreviewPin::PreviewPin(FilterBase& owner, LiveDevice& itsDevice, PictureSource& pictures)
    : LivePin(owner, itsDevice, L"Preview", PIN_CATEGORY_PREVIEW),
      source(pictures),
      delivery(*this),
      control(*this, owner) {}

void* PreviewPin::Find(REFIID iid) {
  if (iid == __uuidof(IAMStreamControl)) return static_cast<IAMStreamControl*>(&control);
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

void PreviewPin::Send(const FramePacer::Frame& frame) {
  if (!control.Passes(frame.begin)) return;
  const Scene scene = source.Seen();
  const ColorAdjustment adjustment = source.Adjustment();
  delivery.Deliver(frame.begin, frame.end, [&](const PictureView& view) {
    picture.Draw(view, scene, adjustment, static_cast<std::uint32_t>(frame.number), PictureSource::Clock());
    return true;
  });
}

}  // namespace quorvex
