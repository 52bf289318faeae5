// The format that a capture pin delivers.
#pragma once

#include <windows.h>

#include <strmif.h>

#include <amvideo.h>

#include "base/com_ptr.h"
#include "base/geometry.h"

namespace quorvex {

// Owns the platform's description of a format.
class PinFormat {
 public:
  PinFormat() = default;
  PinFormat(const PinFormat&) = delete;
  PinFormat& operator=(const PinFormat&) = delete;
  ~PinFormat() { Free(); }

  // Asks a pin for its format; answers the driver's code.
  HRESULT Read(IAMStreamConfig& pin);

  // The picture's part of it; null when there is no format, or it describes none in the plain way.
  [[nodiscard]] VIDEOINFOHEADER* Picture() const;

  // The picture's size; zeros when there is none.
  [[nodiscard]] Size PictureSize() const;

  [[nodiscard]] AM_MEDIA_TYPE* Get() const { return type; }

 private:
  void Free();

  AM_MEDIA_TYPE* type = nullptr;
};

// Tells a pin how many frames a second to deliver, where its format has a picture. Answers the driver's last
// code; a refusal is reported.
HRESULT ApplyFrameRate(IAMStreamConfig& pin, double framesPerSecond);

}  // namespace quorvex
