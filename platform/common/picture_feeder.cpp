#include "platform/common/picture_feeder.h"

#include <algorithm>

namespace quorvex {
namespace {

// Time stamps are rounded to milliseconds in some containers: a picture that would be seen for less than this
// belongs to the time before.
constexpr MediaTime kRounding = 2 * kMillisecond;

// Pictures that nothing refers to need not be decoded when they are over this long before the segment. Longer
// than any picture that packets' times might be out of order with.
constexpr MediaTime kLongBefore = kSecond / 2;

}  // namespace

PictureFeeder::PictureFeeder(FilterBase& owner, OutputPin& fed, const CodedStream& stream,
                             MediaTime frameTime)
    : filter(owner),
      delivery(fed),
      clock(stream.clock),
      pictures(stream, frameTime),
      held(av_frame_alloc()) {}

void PictureFeeder::Begin(const Segment& played) {
  segment = played;
  av_frame_unref(held.get());
  late = {};
  delivery.Begin();
  pictures.Begin(played.start);
}

bool PictureFeeder::IsLongBefore(const AVPacket* packet) const {
  return packet != nullptr && packet->pts != AV_NOPTS_VALUE &&
         clock.Time(packet->pts) < segment.start - kLongBefore;
}

Fed PictureFeeder::Feed(const AVPacket* packet) {
  pictures.SkipUnreferenced(IsLongBefore(packet) || late.IsFarBehind());
  Fed fed = Fed::kMore;
  pictures.Decode(packet, [&](const AVFrame& frame, MediaTime begin, MediaTime end) {
    fed = Show(frame, begin, end);
    return fed == Fed::kMore;
  });
  if (packet == nullptr && delivery.IsFirst() && fed == Fed::kMore) fed = ShowHeld(pictures.Next());
  return fed;
}

Fed PictureFeeder::FillIn() { return delivery.IsFirst() ? ShowHeld(pictures.Next()) : Fed::kMore; }

Fed PictureFeeder::Show(const AVFrame& frame, MediaTime begin, MediaTime end) {
  if (end <= segment.start + kRounding) {
    av_frame_unref(held.get());
    av_frame_ref(held.get(), &frame);
    heldBegin = begin;
    return Fed::kMore;
  }
  if (delivery.IsFirst() && begin > segment.start + kRounding) {
    if (const Fed fed = ShowHeld(begin); fed != Fed::kMore) return fed;
  }
  if (begin >= segment.stop) return Fed::kOver;
  const std::optional<MediaTime> now = filter.StreamTime();
  if (now && late.LeaveOut(*now - (begin - segment.Origin()))) return Fed::kMore;
  return Deliver(frame, begin, end);
}

// The picture that was on when the segment began, where there is one: it lasts until `end`.
Fed PictureFeeder::ShowHeld(MediaTime end) {
  if (held->buf[0] == nullptr) return Fed::kMore;
  return Deliver(*held, heldBegin, std::max(end, segment.start + kMillisecond));
}

Fed PictureFeeder::Deliver(const AVFrame& frame, MediaTime begin, MediaTime end) {
  return delivery.Deliver({{begin - segment.Origin(), end - segment.Origin()}},
                          [&](const PictureView& target) { return converter.Convert(frame, target); });
}

}  // namespace quorvex
