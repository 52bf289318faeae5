// The card's Preview pin: pictures for the screen (32 bits a pixel), at once and as the format's size and
// rate tell.
#pragma once

#include "platform/common/picture_delivery.h"
#include "platform/tv/dropped_frames.h"
#include "platform/tv/live_pin.h"
#include "platform/tv/programme_picture.h"
#include "platform/tv/stream_control.h"

namespace quorvex {

class PreviewPin final : public LivePin {
 public:
  PreviewPin(FilterBase& owner, LiveDevice& itsDevice, PictureSource& pictures, CardState& state);
  ~PreviewPin() { End(); }

 protected:
  void* Find(REFIID iid) override;
  void OnDisconnected() override { control.Forget(); }
  std::vector<MediaType> Types() override;
  [[nodiscard]] bool LaysOut() const override { return true; }
  ALLOCATOR_PROPERTIES BufferNeeds(const MediaType& type) override;
  MediaTime FrameTime() override { return source.Format().frameTime; }
  void OnBegin() override;
  void Send(const FramePacer::Frame& frame) override;

 private:
  PictureSource& source;
  PictureDelivery delivery;
  StreamControl control;
  DroppedFrames counts;
  ProgrammePicture picture;
};

}  // namespace quorvex
