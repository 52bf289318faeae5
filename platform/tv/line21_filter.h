// The line-21 decoder (CLSID_Line21Decoder): byte pairs in, screens of captions out, as applications want
// them (IAMLine21Decoder).
#pragma once

#include "platform/common/line21_control.h"
#include "platform/tv/caption_stream.h"
#include "platform/tv/chain_filter.h"

namespace quorvex {

class Line21Filter final : public ChainFilter {
 public:
  Line21Filter();

 protected:
  void* Find(REFIID iid) override;
  bool Takes(std::size_t input, const AM_MEDIA_TYPE& type) override;
  HRESULT Take(std::size_t input, IMediaSample& sample) override;
  std::vector<MediaType> Gives() override { return {CaptionsType()}; }
  void OnBegin() override;

 private:
  HRESULT Show(const ShownCaptions& captions);

  CaptionWishes wishes;
  Line21Control control;
  Line21Decoder decoder;
  ShownCaptions sent;  // what the other end shows now
};

}  // namespace quorvex
