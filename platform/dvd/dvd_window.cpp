#include "platform/dvd/dvd_window.h"

#include <control.h>

namespace quorvex {

// The picture fills the renderer's client area unless somebody set a part of it to be filled. The renderer is
// asked itself, for the graph may be stopping, and waiting for this thread.
Rect DvdWindow::Shown() {
  ComPtr<IPin> input;
  PIN_INFO info{};
  if (FAILED(pin.ConnectedTo(input.Receive())) || FAILED(input->QueryPinInfo(&info))) return {};
  const auto renderer = ComPtr<IBaseFilter>::Attach(info.pFilter);
  ComPtr<IBasicVideo> video;  // the platform's headers give it no number for As
  renderer->QueryInterface(IID_IBasicVideo, video.ReceiveVoid());
  long left = 0;
  long top = 0;
  long width = 0;
  long height = 0;
  if (!video || FAILED(video->GetDestinationPosition(&left, &top, &width, &height))) return {};
  return {static_cast<int>(left), static_cast<int>(top), static_cast<int>(left + width),
          static_cast<int>(top + height)};
}

std::optional<Point> DvdWindow::VideoPoint(POINT point, VideoShape shape) {
  const Rect shown = Shown();
  if (shown == Rect{}) return std::nullopt;
  return canvas.ToVideo({static_cast<int>(point.x) - shown.left, static_cast<int>(point.y) - shown.top},
                        shown.Extent(), shape.wide, VideoSize(shape.pal));
}

}  // namespace quorvex
