// The VBI surface allocator (CLSID_VBISurfaces): a video port's data must end somewhere.
#pragma once

#include "platform/tv/chain_filter.h"

namespace quorvex {

// Of a video port's vertical blanking interval.
MediaType VideoPortVbiType();

class VbiSurfaces final : public ChainFilter {
 public:
  VbiSurfaces();

 protected:
  bool Takes(std::size_t input, const AM_MEDIA_TYPE& type) override;
  HRESULT Take(std::size_t, IMediaSample&) override { return S_OK; }
  std::vector<MediaType> Gives() override { return {}; }
};

}  // namespace quorvex
