// The filters that make captions of what the card hears in the blanking interval: a tee, a decoder of caption
// data, the decoder of line 21, and what holds the card's overlay of the interval.
#pragma once

#include <windows.h>

#include <strmif.h>

#include "base/com_ptr.h"
#include "base/line21_interface.h"

namespace quorvex {

class CaptionChain {
 public:
  // Makes the filters anew and adds them to a graph, as far as the platform has them. Answers the decoder
  // that the captions are worked by; null when one is missing.
  ComPtr<IAMLine21Decoder> AddTo(IGraphBuilder& graph);

  // Connects them behind a card's filter; what cannot be rendered is reported. Only after AddTo answered a
  // decoder.
  void Connect(IGraphBuilder& graph, IBaseFilter& card) const;

  void Release();

 private:
  ComPtr<IBaseFilter> lineDecoder;
  ComPtr<IBaseFilter> dataDecoder;
  ComPtr<IBaseFilter> tee;
  ComPtr<IBaseFilter> surfaces;
};

}  // namespace quorvex
