// The format that a capture pin delivers.
#pragma once

#include <windows.h>

#include <strmif.h>

#include <amvideo.h>

#include <span>

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

  // Its format block: the bytes there are, and others in their place (false: there is no memory for them).
  [[nodiscard]] std::span<const BYTE> Block() const;
  bool SetBlock(std::span<const BYTE> bytes);

  [[nodiscard]] AM_MEDIA_TYPE* Get() const { return type; }

 private:
  void Free();

  AM_MEDIA_TYPE* type = nullptr;
};

// Tells a pin how many frames a second to deliver, where its format has a picture. Answers the driver's last
// code; a refusal is reported with this message.
HRESULT ApplyFrameRate(IAMStreamConfig& pin, double framesPerSecond, const char* message);

}  // namespace quorvex
