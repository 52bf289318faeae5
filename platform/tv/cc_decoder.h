// The decoder between a card's VBI pin and a line-21 decoder ("CC Decoder"): what the card has read, as byte
// pairs.
#pragma once

#include "platform/tv/caption_stream.h"
#include "platform/tv/chain_filter.h"

namespace quorvex {

inline constexpr CLSID kCcDecoderClass = {
    0x5c0a1f30, 0x7e54, 0x4a2b, {0x9f, 0x61, 0x2d, 0x8e, 0x47, 0xb3, 0x10, 0x06}};
inline constexpr const wchar_t* kCcDecoderName = L"CC Decoder";

class CcDecoder final : public ChainFilter {
 public:
  CcDecoder() : ChainFilter(kCcDecoderClass, {L"VBI"}, {L"CC"}) {}

 protected:
  bool Takes(std::size_t, const AM_MEDIA_TYPE& type) override { return IsOfKind(type, VbiType()); }
  // A picture without line 21 is not passed on.
  HRESULT Take(std::size_t, IMediaSample& sample) override {
    return BytesOf(sample).size == kPairBytes ? Output(0).Deliver(&sample) : S_OK;
  }
  std::vector<MediaType> Gives() override { return {BytePairType()}; }
};

}  // namespace quorvex
