#include "platform/common/picture_feeder.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace quorvex {
namespace {

// Time stamps are rounded to milliseconds in some containers: a picture that would be seen for less than this
// belongs to the time before.
constexpr MediaTime kRounding = 2 * kMillisecond;

// Pictures that nothing refers to need not be decoded when they are over this long before the segment. Longer
// than any picture that packets' times might be out of order with.
constexpr MediaTime kLongBefore = kSecond / 2;

// What the pixels take, whatever biSizeImage says: it may be 0.
std::size_t BytesOf(const BITMAPINFOHEADER& bitmap) {
  return static_cast<std::size_t>(bitmap.biWidth) * static_cast<std::size_t>(std::abs(bitmap.biHeight)) * 4;
}

}  // namespace

PictureFeeder::PictureFeeder(FilterBase& owner, OutputPin& fed, const CodedStream& stream,
                             MediaTime frameTime)
    : filter(owner),
      pin(fed),
      clock(stream.clock),
      usualTime(frameTime > 0 ? frameTime : kSecond / 25),
      decoder(stream),
      held(av_frame_alloc()) {}

void PictureFeeder::Begin(const Segment& played) {
  segment = played;
  next = played.start;
  first = true;
  av_frame_unref(held.get());
  late = {};
  type = pin.AgreedType();
  decoder.Flush();
}

bool PictureFeeder::IsLongBefore(const AVPacket* packet) const {
  return packet != nullptr && packet->pts != AV_NOPTS_VALUE &&
         clock.Time(packet->pts) < segment.start - kLongBefore;
}

Fed PictureFeeder::Feed(const AVPacket* packet) {
  decoder.SkipUnreferenced(IsLongBefore(packet) || late.IsFarBehind());
  Fed fed = Fed::kMore;
  decoder.Decode(packet, [&](const AVFrame& frame) {
    fed = Show(frame);
    return fed == Fed::kMore;
  });
  if (packet == nullptr && first && fed == Fed::kMore) fed = ShowHeld(next);
  return fed;
}

Fed PictureFeeder::Show(const AVFrame& frame) {
  const bool timed = frame.best_effort_timestamp != AV_NOPTS_VALUE;
  const MediaTime begin = timed ? clock.Time(frame.best_effort_timestamp) : next;
  const MediaTime lasts = frame.pkt_duration > 0 ? clock.Length(frame.pkt_duration) : usualTime;
  next = begin + lasts;
  if (next <= segment.start + kRounding) {
    av_frame_unref(held.get());
    av_frame_ref(held.get(), &frame);
    heldBegin = begin;
    return Fed::kMore;
  }
  if (first && begin > segment.start + kRounding) {
    if (const Fed fed = ShowHeld(begin); fed != Fed::kMore) return fed;
  }
  if (begin >= segment.stop) return Fed::kOver;
  const std::optional<MediaTime> now = filter.StreamTime();
  if (now && late.LeaveOut(*now - (begin - segment.start))) return Fed::kMore;
  return Deliver(frame, begin - segment.start, next - segment.start);
}

// The picture that was on when the segment began, where there is one: it lasts until `end`.
Fed PictureFeeder::ShowHeld(MediaTime end) {
  if (held->buf[0] == nullptr) return Fed::kMore;
  return Deliver(*held, heldBegin - segment.start, std::max(end - segment.start, kMillisecond));
}

Fed PictureFeeder::Deliver(const AVFrame& frame, MediaTime begin, MediaTime end) {
  const ComPtr<IMediaSample> sample = pin.NextBuffer();
  if (!sample) return Fed::kRefused;
  // The other end may ask for another layout of the buffer, with this very sample.
  if (AM_MEDIA_TYPE* changed = nullptr; sample->GetMediaType(&changed) == S_OK) {
    type = MediaType(*changed);
    FreeMediaType(*changed);
    ::CoTaskMemFree(changed);
  }
  BYTE* target = nullptr;
  const VIDEOINFOHEADER* picture = type.Picture();
  if (FAILED(sample->GetPointer(&target)) || picture == nullptr) return Fed::kRefused;
  const std::size_t bytes = BytesOf(picture->bmiHeader);
  if (static_cast<std::size_t>(sample->GetSize()) < bytes) return Fed::kRefused;
  if (!Convert(frame, {target, bytes})) return Fed::kMore;
  sample->SetActualDataLength(static_cast<long>(bytes));
  sample->SetTime(&begin, &end);
  sample->SetSyncPoint(TRUE);
  sample->SetPreroll(FALSE);
  sample->SetDiscontinuity(first ? TRUE : FALSE);
  first = false;
  return pin.Deliver(sample.Get()) == S_OK ? Fed::kMore : Fed::kRefused;
}

// A positive height means that the bottom line comes first.
bool PictureFeeder::Convert(const AVFrame& frame, std::span<BYTE> target) {
  const BITMAPINFOHEADER& bitmap = type.Picture()->bmiHeader;
  const int height = std::abs(bitmap.biHeight);
  const int line = bitmap.biWidth * 4;
  const RECT& part = type.Picture()->rcTarget;  // of a buffer that is wider than the picture
  const int width = part.right > part.left ? part.right - part.left : bitmap.biWidth;
  ChooseScaler(frame, width, height);
  if (!scaler) return false;
  const bool bottomFirst = bitmap.biHeight > 0;
  BYTE* const top =
      bottomFirst ? target.data() + static_cast<std::ptrdiff_t>(line) * (height - 1) : target.data();
  const std::array<BYTE*, 4> planes{top};
  const std::array<int, 4> lines{bottomFirst ? -line : line};
  return sws_scale(scaler.get(), static_cast<const std::uint8_t* const*>(frame.data),
                   static_cast<const int*>(frame.linesize), 0, frame.height, planes.data(), lines.data()) > 0;
}

void PictureFeeder::ChooseScaler(const AVFrame& frame, int width, int height) {
  const SwsContext* before = scaler.get();
  scaler.reset(sws_getCachedContext(scaler.release(), frame.width, frame.height,
                                    static_cast<AVPixelFormat>(frame.format), width, height, AV_PIX_FMT_BGR0,
                                    SWS_BILINEAR, nullptr, nullptr, nullptr));
  const int colours = frame.colorspace;
  if (!scaler || (scaler.get() == before && colours == scalerColours)) return;
  scalerColours = colours;
  const bool fullRange = frame.color_range == AVCOL_RANGE_JPEG;
  sws_setColorspaceDetails(scaler.get(), sws_getCoefficients(colours), fullRange ? 1 : 0,
                           sws_getCoefficients(SWS_CS_DEFAULT), 1, 0, 1 << 16, 1 << 16);
}

}  // namespace quorvex
