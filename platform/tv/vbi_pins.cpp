#include "platform/tv/vbi_pins.h"

#include <uuids.h>

#include "platform/tv/caption_stream.h"
#include "platform/tv/vbi_surfaces.h"

namespace quorvex {

VbiPin::VbiPin(FilterBase& owner, LiveDevice& itsDevice, PictureSource& pictures)
    : LivePin(owner, itsDevice, L"VBI", PIN_CATEGORY_VBI), source(pictures) {}

std::vector<MediaType> VbiPin::Types() { return {VbiType()}; }

ALLOCATOR_PROPERTIES VbiPin::BufferNeeds(const MediaType&) {
  constexpr long kBuffers = 8;
  return {kBuffers, static_cast<long>(kPairBytes), 1, 0};
}

void VbiPin::Send(const FramePacer::Frame& frame) {
  const CaptionPair pair = captions.Next(source.Seen());
  const ComPtr<IMediaSample> sample = NextBuffer();
  REFERENCE_TIME begin = frame.begin;
  REFERENCE_TIME end = frame.end;
  if (!sample || !FillSample(*sample.Get(), &pair, sizeof pair)) return;
  sample->SetTime(&begin, &end);
  Deliver(sample.Get());
}

VideoPortVbiPin::VideoPortVbiPin(FilterBase& owner)
    : OutputPin(owner, L"VPVBI"), pinCategory(*this, PIN_CATEGORY_VIDEOPORT_VBI) {}

void* VideoPortVbiPin::Find(REFIID iid) {
  if (iid == __uuidof(IKsPropertySet)) return static_cast<IKsPropertySet*>(&pinCategory);
  return OutputPin::Find(iid);
}

std::vector<MediaType> VideoPortVbiPin::Types() { return {VideoPortVbiType()}; }

ALLOCATOR_PROPERTIES VideoPortVbiPin::BufferNeeds(const MediaType&) { return {1, 1, 1, 0}; }

}  // namespace quorvex
