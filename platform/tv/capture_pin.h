// The card's Capture pin: pictures in the format that was set, with the times they were taken at.
#pragma once

#include "platform/tv/dropped_frames.h"
#include "platform/tv/live_pin.h"
#include "platform/tv/programme_picture.h"
#include "platform/tv/stream_config.h"
#include "platform/tv/stream_control.h"

namespace quorvex {

class CapturePin final : public LivePin {
 public:
  CapturePin(FilterBase& owner, LiveDevice& itsDevice, PictureSource& pictures, CardState& state);
  ~CapturePin() { End(); }

 protected:
  void* Find(REFIID iid) override;
  void OnDisconnected() override { control.Forget(); }
  std::vector<MediaType> Types() override;
  ALLOCATOR_PROPERTIES BufferNeeds(const MediaType& type) override;
  MediaTime FrameTime() override { return source.Format().frameTime; }
  void OnBegin() override;
  void Send(const FramePacer::Frame& frame) override;

 private:
  bool Fill(IMediaSample& sample, const FramePacer::Frame& frame);

  PictureSource& source;
  StreamConfig config;
  StreamControl control;
  DroppedFrames counts;
  ProgrammePicture picture;
  CaptureFormat format;              // as agreed with the other end
  std::vector<std::uint8_t> canvas;  // a picture before it is laid out
  bool first = true;
};

}  // namespace quorvex
