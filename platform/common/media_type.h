// An owner of a media type, and the plain types that the platform layer's pins offer.
#pragma once

#include <windows.h>

#include <ddraw.h>
#include <strmif.h>

#include <amvideo.h>

namespace quorvex {

// Frees what a media type points to.
void FreeMediaType(AM_MEDIA_TYPE& type);

class MediaType {
 public:
  MediaType() = default;
  explicit MediaType(const AM_MEDIA_TYPE& other);
  MediaType(const MediaType& other) : MediaType(other.type) {}
  MediaType(MediaType&& other) noexcept;
  MediaType& operator=(MediaType other) noexcept;
  ~MediaType() { FreeMediaType(type); }

  // Pictures of 32 bits a pixel, bottom line first. `frameTime` in units of 100 ns, 0 when it is not known.
  static MediaType Rgb32(int width, int height, REFERENCE_TIME frameTime);

  // Interleaved samples of 16 bits.
  static MediaType Pcm16(int channels, int rate);

  [[nodiscard]] const AM_MEDIA_TYPE& Get() const { return type; }

  // A copy whose memory the receiver frees (CoTaskMemAlloc).
  void CopyTo(AM_MEDIA_TYPE& target) const;
  [[nodiscard]] AM_MEDIA_TYPE* Clone() const;

  // The description of pictures; null when the type is not one of plain video.
  [[nodiscard]] const VIDEOINFOHEADER* Picture() const;

  // Whether this type is one that `partial` leaves open: GUID_NULL there stands for any.
  [[nodiscard]] bool Matches(const AM_MEDIA_TYPE& partial) const;
  // Whether it is the same type, to the last byte of its format.
  [[nodiscard]] bool Equals(const AM_MEDIA_TYPE& other) const;

 private:
  template <typename Format>
  void SetFormat(const GUID& kind, const Format& format);

  AM_MEDIA_TYPE type{};
};

// Whether a type names everything that a connection needs.
bool IsComplete(const AM_MEDIA_TYPE& type);

}  // namespace quorvex
