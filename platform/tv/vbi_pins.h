// The card's pins for what lies between its pictures: VBI gives line 21, two bytes a picture; VPVBI is where
// a video port would be.
#pragma once

#include "platform/tv/live_pin.h"
#include "platform/tv/picture_source.h"
#include "platform/tv/programme_captions.h"

namespace quorvex {

class VbiPin final : public LivePin {
 public:
  VbiPin(FilterBase& owner, LiveDevice& itsDevice, PictureSource& pictures);
  ~VbiPin() { End(); }

 protected:
  std::vector<MediaType> Types() override;
  ALLOCATOR_PROPERTIES BufferNeeds(const MediaType& type) override;
  MediaTime FrameTime() override { return kSecond * 1001 / 30000; }
  // A code that is missing spoils a caption.
  bool MayLose() override { return false; }
  void Send(const FramePacer::Frame& frame) override;

 private:
  PictureSource& source;
  ProgrammeCaptions captions;
};

// It carries no samples: with a video port the hardware writes into the surfaces that the other end
// allocates.
class VideoPortVbiPin final : public OutputPin {
 public:
  explicit VideoPortVbiPin(FilterBase& owner);
  ~VideoPortVbiPin() = default;

 protected:
  void* Find(REFIID iid) override;
  std::vector<MediaType> Types() override;
  ALLOCATOR_PROPERTIES BufferNeeds(const MediaType& type) override;

 private:
  PinCategory pinCategory;
};

}  // namespace quorvex
