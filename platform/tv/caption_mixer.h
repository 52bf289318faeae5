// Lays captions over the pictures on their way to a renderer, which has one input only.
#pragma once

#include <mutex>

#include "platform/common/caption_painter.h"
#include "platform/common/picture_delivery.h"
#include "platform/tv/caption_stream.h"
#include "platform/tv/chain_filter.h"

namespace quorvex {

inline constexpr CLSID kCaptionMixerClass = {
    0x5c0a1f30, 0x7e54, 0x4a2b, {0x9f, 0x61, 0x2d, 0x8e, 0x47, 0xb3, 0x10, 0x07}};

class CaptionMixer final : public ChainFilter {
 public:
  CaptionMixer();

 protected:
  bool Takes(std::size_t input, const AM_MEDIA_TYPE& type) override;
  HRESULT Take(std::size_t input, IMediaSample& sample) override;
  std::vector<MediaType> Gives() override { return AsArrives(); }
  [[nodiscard]] bool LaysOut() const override { return true; }
  void OnBegin() override;

 private:
  static constexpr std::size_t kPictures = 0;

  HRESULT TakePicture(IMediaSample& sample);
  void TakeCaptions(IMediaSample& sample);
  ShownCaptions Captions();

  PictureDelivery delivery;
  CaptionPainter painter;
  std::mutex lock;  // guards captions
  ShownCaptions captions;
};

}  // namespace quorvex
