#include "platform/dvd/dvd_window.h"

#include <control.h>

namespace quorvex {

// The picture fills the renderer's client area unless somebody set a part of it to be filled.
std::optional<Point> DvdWindow::VideoPoint(POINT point, VideoShape shape) {
  ComPtr<IBasicVideo> video;  // the platform's headers give it no number for As
  if (const ComPtr<IFilterGraph> graph = filter.Graph())
    graph->QueryInterface(IID_IBasicVideo, video.ReceiveVoid());
  long left = 0;
  long top = 0;
  long width = 0;
  long height = 0;
  if (!video || FAILED(video->GetDestinationPosition(&left, &top, &width, &height))) return std::nullopt;
  return canvas.ToVideo({static_cast<int>(point.x - left), static_cast<int>(point.y - top)},
                        {static_cast<int>(width), static_cast<int>(height)}, shape.wide,
                        VideoSize(shape.pal));
}

}  // namespace quorvex
