#include "platform/tv/capture_pin.h"

#include <uuids.h>

#include "platform/tv/capture_type.h"

namespace quorvex {

CapturePin::CapturePin(FilterBase& owner, LiveDevice& itsDevice, PictureSource& pictures, CardState& state)
    : LivePin(owner, itsDevice, L"Capture", PIN_CATEGORY_CAPTURE),
      source(pictures),
      config(*this, pictures, state),
      control(*this, owner),
      counts(*this, state.capture) {}

void* CapturePin::Find(REFIID iid) {
  if (iid == __uuidof(IAMStreamConfig)) return static_cast<IAMStreamConfig*>(&config);
  if (iid == __uuidof(IAMStreamControl)) return static_cast<IAMStreamControl*>(&control);
  if (iid == __uuidof(IAMDroppedFrames)) return static_cast<IAMDroppedFrames*>(&counts);
  return LivePin::Find(iid);
}

// The other layout too, for a receiver that does not take the one that was set.
std::vector<MediaType> CapturePin::Types() {
  CaptureFormat offered = source.Format();
  std::vector<MediaType> types{TypeOf(offered)};
  offered.layout = offered.layout == PixelLayout::kRgb24 ? PixelLayout::kYuy2 : PixelLayout::kRgb24;
  types.push_back(TypeOf(offered));
  return types;
}

ALLOCATOR_PROPERTIES CapturePin::BufferNeeds(const MediaType& type) {
  constexpr long kBuffers = 8;  // a quarter of a second, for a receiver that writes a file
  return {kBuffers, static_cast<long>(type.Get().lSampleSize), 1, 0};
}

void CapturePin::OnBegin() {
  counts.Clear();
  first = true;
  format = FormatOf(AgreedType().Get(), source.Format().frameTime).value_or(source.Format());
  canvas.resize(static_cast<std::size_t>(format.size.width) * static_cast<std::size_t>(format.size.height) *
                4);
}

void CapturePin::Send(const FramePacer::Frame& frame) {
  if (!control.Passes(frame.begin)) {
    first = true;
    return;
  }
  if (frame.lost > 0 && !first) counts.CountLost(frame.number - frame.lost, frame.lost);
  const ComPtr<IMediaSample> sample = NextBuffer();
  if (!sample || !Fill(*sample.Get(), frame)) return;
  first = false;
  if (Deliver(sample.Get()) == S_OK) counts.CountDelivered(PictureBytes(format.layout, format.size));
}

bool CapturePin::Fill(IMediaSample& sample, const FramePacer::Frame& frame) {
  const std::size_t bytes = PictureBytes(format.layout, format.size);
  BYTE* target = nullptr;
  if (FAILED(sample.GetPointer(&target)) || static_cast<std::size_t>(sample.GetSize()) < bytes) return false;
  const PictureView view{canvas.data(), static_cast<std::ptrdiff_t>(format.size.width) * 4, format.size.width,
                         format.size.height};
  picture.Draw(view, source, frame.number, AirTimeOf(frame.begin));
  LayOut(view, format.layout, {target, bytes});
  REFERENCE_TIME begin = frame.begin;
  REFERENCE_TIME end = frame.end;
  LONGLONG number = frame.number;
  LONGLONG next = number + 1;
  sample.SetActualDataLength(static_cast<long>(bytes));
  sample.SetTime(&begin, &end);
  sample.SetMediaTime(&number, &next);
  sample.SetSyncPoint(TRUE);
  sample.SetPreroll(FALSE);
  sample.SetDiscontinuity(first || frame.lost > 0 ? TRUE : FALSE);
  return true;
}

}  // namespace quorvex
