// Delivers pictures (MediaType::Rgb32) to what a pin is connected to, in the layout that the other end wants.
#pragma once

#include <windows.h>

#include <optional>

#include "platform/common/media_time.h"
#include "platform/common/output_pin.h"
#include "platform/common/picture_view.h"
#include "platform/common/stream_feeder.h"

namespace quorvex {

class PictureDelivery {
 public:
  // The pin outlives the delivery.
  explicit PictureDelivery(OutputPin& fed) : pin(fed) {}

  // What follows begins at another place.
  void Begin();

  [[nodiscard]] bool IsFirst() const { return first; }

  struct Times {
    MediaTime begin;
    MediaTime end;
  };

  // Delivers a picture that draw(PictureView) fills, unless that answers false. Times are the stream's; a
  // picture without is to be shown at once.
  template <typename Draw>
  Fed Deliver(const std::optional<Times>& times, Draw draw) {
    const ComPtr<IMediaSample> sample = pin.NextBuffer();
    PictureView view;
    if (!sample || !Open(*sample.Get(), view)) return Fed::kRefused;
    return draw(view) ? Send(*sample.Get(), times) : Fed::kMore;
  }

 private:
  bool Open(IMediaSample& sample, PictureView& view);
  Fed Send(IMediaSample& sample, std::optional<Times> times);

  OutputPin& pin;
  MediaType type;  // of the pin's samples
  bool first = true;
};

}  // namespace quorvex
