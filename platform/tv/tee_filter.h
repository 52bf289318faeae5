// The tee behind a card's VBI pin ("Tee/Sink-to-Sink Converter"): gives what arrives to each output.
#pragma once

#include "platform/tv/chain_filter.h"

namespace quorvex {

inline constexpr CLSID kTeeClass = {
    0x5c0a1f30, 0x7e54, 0x4a2b, {0x9f, 0x61, 0x2d, 0x8e, 0x47, 0xb3, 0x10, 0x05}};
inline constexpr const wchar_t* kTeeName = L"Tee/Sink-to-Sink Converter";

class TeeFilter final : public ChainFilter {
 public:
  TeeFilter() : ChainFilter(kTeeClass, {L"Input"}, {L"Output 1", L"Output 2"}) {}

 protected:
  bool Takes(std::size_t, const AM_MEDIA_TYPE&) override { return true; }
  HRESULT Take(std::size_t, IMediaSample& sample) override;
  std::vector<MediaType> Gives() override { return AsArrives(); }
};

// A sample is handed on as it is: who shares it does not write into it.
inline HRESULT TeeFilter::Take(std::size_t, IMediaSample& sample) {
  for (const std::size_t output : {0, 1}) {
    if (Output(output).IsConnected()) Output(output).Deliver(&sample);
  }
  return S_OK;
}

}  // namespace quorvex
