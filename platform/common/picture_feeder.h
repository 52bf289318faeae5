// Feeds a pin with pictures (MediaType::Rgb32). The first one is that which is to be seen at the segment's
// start, however far before it the decoder had to begin; pictures that come too late for the clock are left
// out.
#pragma once

#include <optional>

#include "platform/common/filter_base.h"
#include "platform/common/late_pictures.h"
#include "platform/common/picture_converter.h"
#include "platform/common/picture_delivery.h"
#include "platform/common/stream_feeder.h"
#include "platform/common/timed_pictures.h"

namespace quorvex {

class PictureFeeder final : public StreamFeeder {
 public:
  // `frameTime`: how long a picture lasts when the stream does not say (0: nobody knows). The filter and the
  // pin outlive the feeder.
  PictureFeeder(FilterBase& owner, OutputPin& fed, const CodedStream& stream, MediaTime frameTime);

  // Whether there is a decoder for the stream.
  [[nodiscard]] bool IsOpen() const { return pictures.IsOpen(); }

  void Begin(const Segment& played) override;
  Fed Feed(const AVPacket* packet) override;
  Fed FillIn() override;

 private:
  [[nodiscard]] bool IsLongBefore(const AVPacket* packet) const;
  Fed Show(const AVFrame& frame, MediaTime begin, MediaTime end);
  Fed ShowHeld(MediaTime end);
  Fed Deliver(const AVFrame& frame, MediaTime begin, MediaTime end);

  FilterBase& filter;
  PictureDelivery delivery;
  const TickClock clock;
  TimedPictures pictures;
  PictureConverter converter;
  Segment segment;
  AvOwner<AVFrame> held;  // the last picture before the segment: it may last into it
  MediaTime heldBegin = 0;
  LatePictures late;
};

}  // namespace quorvex
