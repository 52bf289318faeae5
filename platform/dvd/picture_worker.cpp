#include "platform/dvd/picture_worker.h"

#include <algorithm>
#include <cstring>

#include "platform/common/com_thread.h"
#include "platform/dvd/stream_kinds.h"

namespace quorvex {
namespace {

constexpr std::chrono::milliseconds kLookUp{20};
// A picture is made so long before its time: later than this nothing is laid over it any more.
constexpr MediaTime kMaking = 12 * kMillisecond;
// A place is told so long before its time when it has no picture.
constexpr MediaTime kPlaceAhead = 40 * kMillisecond;
// After so many looks without a picture a black one is shown.
constexpr int kPatience = 25;
// How often it is looked whether a flushed renderer gave back its picture, a millisecond each.
constexpr int kMostLooks = 100;
constexpr std::int64_t kNtscTicks = 3003;
constexpr std::int64_t kPalTicks = 3600;
constexpr int kPixel = 4;

void FillBlack(const PictureView& view, const Rect& area) {
  for (int y = area.top; y < area.bottom; ++y)
    std::memset(view.top + y * view.stride + static_cast<std::ptrdiff_t>(area.left) * kPixel, 0,
                static_cast<std::size_t>(area.Width()) * kPixel);
}

// All of the view that lies outside of `area`.
void FillBorder(const PictureView& view, const Rect& area) {
  FillBlack(view, {0, 0, view.width, area.top});
  FillBlack(view, {0, area.top, area.left, area.bottom});
  FillBlack(view, {area.right, area.top, view.width, area.bottom});
  FillBlack(view, {0, area.bottom, view.width, view.height});
}

PictureView PartOf(const PictureView& view, const Rect& area) {
  return {view.top + area.top * view.stride + static_cast<std::ptrdiff_t>(area.left) * kPixel, view.stride,
          area.Width(), area.Height()};
}

// The area within what the renderer may have made smaller.
Rect FittedTo(const PictureView& view, const Size& canvas, Rect area) {
  const auto x = [&](int value) { return value * view.width / canvas.width; };
  const auto y = [&](int value) { return value * view.height / canvas.height; };
  return {x(area.left), y(area.top), x(area.right), y(area.bottom)};
}

}  // namespace

void PictureWorker::Run() {
  const ComThread com;
  Forget();
  av_frame_unref(current.get());
  around.pin.DeliverNewSegment(0, kForever);
  while (!queue.IsHalted()) {
    if (queue.TakeFlush()) Forget();
    if (const std::optional<PlayItem> item = queue.Pop(kLookUp)) {
      emptyLooks = 0;
      Play(*item);
    } else if (!queue.Interrupted() && !ended) {
      Hold();
    }
  }
}

// The last picture stays until the next one comes.
void PictureWorker::Forget() {
  parser.Flush();
  overlay.Forget();
  captions.Forget();
  delivery.Begin();
  late = {};
  next = 0;
  emptyLooks = 0;
  ended = false;
  held = false;
  cueWanted = true;
  awaitsPicture = true;
  renewal = Renewal::kNone;
  activated = false;
}

void PictureWorker::Play(const PlayItem& item) {
  switch (item.kind) {
    case PlayItem::Kind::kData:
      parser.SkipUnreferenced(late.IsFarBehind());
      parser.Feed(item.bytes, item.time, [this](const AVFrame& frame) { return Show(frame); });
      break;
    case PlayItem::Kind::kPlace: ReachPlace(item); break;
    case PlayItem::Kind::kPalette: overlay.SetPalette(item.palette); break;
    case PlayItem::Kind::kDrain: Drain(); break;
    case PlayItem::Kind::kEnd:
      Drain();
      WaitUntil(around.timeline.Find(stretch, ToMediaTime(next)).value_or(0));
      if (queue.Interrupted()) break;
      ended = true;
      TellEnd();
      break;
  }
}

void PictureWorker::TellEnd() {
  const std::scoped_lock lock(flushLock);
  around.pin.DeliverEndOfStream();
}

void PictureWorker::FlushAndRenew() {
  const std::scoped_lock lock(flushLock);
  renewal = Renewal::kAwaitsFlush;
  around.pin.DeliverBeginFlush();
  for (int i = 0; i < kMostLooks && delivering; ++i) ::Sleep(1);
  around.pin.DeliverEndFlush();
  around.pin.DeliverNewSegment(0, kForever);
  Renew();
}

void PictureWorker::Drain() {
  parser.Drain([this](const AVFrame& frame) { return Show(frame); });
}

void PictureWorker::ReachPlace(const PlayItem& item) {
  stretch = item.stretch;
  const DvdTicks time = item.time.value_or(0);
  const std::optional<MediaTime> due = around.timeline.Find(stretch, ToMediaTime(time));
  if (due) WaitUntil(*due - kPlaceAhead);
  if (queue.Interrupted()) return;
  place = item.place;
  shape = ShapeAt(around.tables, *place);
  overlay.SetPlace(place);
  overlay.SetStretch(stretch);
  activated = false;
  around.board.Show(place);
}

MediaTime PictureWorker::FrameTime() const { return ToMediaTime(shape.pal ? kPalTicks : kNtscTicks); }

bool PictureWorker::Show(const AVFrame& frame) {
  if (const AVFrameSideData* data = av_frame_get_side_data(&frame, AV_FRAME_DATA_A53_CC))
    captions.Add({data->data, data->size});
  captions.Advance();
  const bool timed = frame.best_effort_timestamp != AV_NOPTS_VALUE;
  const DvdTicks time = timed ? frame.best_effort_timestamp : next;
  next = time + (shape.pal ? kPalTicks : kNtscTicks) * (2 + frame.repeat_pict) / 2;
  const MediaTime begin = around.timeline.Stamp(stretch, ToMediaTime(time), around.filter.Now(), !soundLeads);
  if (!WaitUntil(begin - kMaking)) return false;
  if (Runs() && late.LeaveOut(around.filter.Now() - begin)) return true;
  av_frame_unref(current.get());
  av_frame_ref(current.get(), &frame);
  currentTime = time;
  held = false;
  awaitsPicture = false;
  return Deliver(begin, begin + ToMediaTime(next - time));
}

// Waits while the graph runs; what changes meanwhile over the picture that is shown is drawn at once. False
// when the playing is cut off.
bool PictureWorker::WaitUntil(MediaTime time) {
  while (!queue.Interrupted()) {
    const MediaTime left = time - around.filter.Now();
    if (!Runs() || left <= 0) return true;
    if (!queue.Sleep(std::chrono::microseconds(std::min(left / 10, std::int64_t{20'000}))) &&
        LookNow() != drawn)
      Redraw();
  }
  return false;
}

// Nothing comes: a still, a menu, or a slow disc. A renderer that stands keeps what it gets: after a jump it
// is to get the picture there, not the one of before.
void PictureWorker::Hold() {
  held = true;
  const bool empty = current->buf[0] == nullptr;
  if (awaitsPicture && !empty && !Runs()) return;
  if (empty && ++emptyLooks < kPatience) return;
  Renewal wanted = Renewal::kWanted;
  if (renewal.compare_exchange_strong(wanted, Renewal::kNone) || LookNow() != drawn || (cueWanted && !Runs()))
    Redraw();
}

void PictureWorker::Redraw() {
  const MediaTime now = around.filter.Now();
  Deliver(now, now + FrameTime());
}

// Whether to go on. A sample that a renderer gave back unseen is not a reason to stop.
bool PictureWorker::Deliver(MediaTime begin, MediaTime end) {
  if (queue.Interrupted()) return false;
  cueWanted = false;
  around.timeline.Reach(end);
  do {
    delivering = true;
    delivery.Deliver({{begin, end}}, [this](const PictureView& target) { return Draw(target); });
    delivering = false;
  } while (MustRenew());
  return !queue.Interrupted();
}

// Whether the renderer was flushed while it stood, and is to get the same picture again.
bool PictureWorker::MustRenew() {
  while (renewal == Renewal::kAwaitsFlush && !queue.Interrupted()) queue.Sleep(std::chrono::milliseconds(1));
  Renewal wanted = Renewal::kWanted;
  return !queue.Interrupted() && !Runs() && renewal.compare_exchange_strong(wanted, Renewal::kNone);
}

// In a still, what is laid over the picture goes on by the clock.
DvdTicks PictureWorker::OverlayTime() {
  if (!held) return currentTime;
  const std::optional<MediaTime> zero = around.timeline.Find(stretch, 0);
  return zero ? std::max(currentTime, ToDvdTicks(around.filter.Now() - *zero)) : currentTime;
}

void PictureWorker::TakeSubpictures() {
  while (const std::optional<PlayItem> piece = subpictures.TryPop()) overlay.Feed(*piece);
}

PictureWorker::Look PictureWorker::LookNow() {
  TakeSubpictures();
  return {overlay.At(OverlayTime(), Selected(), onlyForced), captions.Look()};
}

bool PictureWorker::Draw(const PictureView& target) {
  drawn = LookNow();
  const Rect area = FittedTo(target, around.canvas.Extent(), around.canvas.VideoArea(shape.wide));
  const PictureView part = PartOf(target, area);
  if (current->buf[0] == nullptr || !DrawVideo(part)) FillBlack(target, {0, 0, target.width, target.height});
  FillBorder(target, area);
  captions.Draw(part);
  return true;
}

bool PictureWorker::DrawVideo(const PictureView& area) {
  const Size video = VideoSize(shape.pal);
  const std::ptrdiff_t line = static_cast<std::ptrdiff_t>(video.width) * kPixel;
  layer.resize(static_cast<std::size_t>(line) * static_cast<std::size_t>(video.height));
  const PictureView view{layer.data(), line, video.width, video.height};
  if (!converter.Convert(*current, view)) return false;
  overlay.Draw(view, OverlayTime(), Selected(), onlyForced);
  scaler.Scale(view, area);
  return true;
}

void PictureWorker::Select(const Overlay::Selection& selection) {
  button = selection.button;
  activated = selection.activated;
  queue.Poke();
}

void PictureWorker::ShowOnlyForced(bool only) {
  if (onlyForced.exchange(only) != only) queue.Poke();
}

}  // namespace quorvex
