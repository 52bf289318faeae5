// IAMLine21Decoder: what applications want of the closed captions.
#pragma once

#include "base/line21_interface.h"
#include "platform/common/caption_wishes.h"
#include "platform/common/filter_part.h"

namespace quorvex {

class Line21Control final : public FilterPart<IAMLine21Decoder> {
 public:
  Line21Control(FilterBase& owner, CaptionWishes& set) : FilterPart(owner), wishes(set) {}

  HRESULT STDMETHODCALLTYPE GetDecoderLevel(Line21Level* level) override;
  HRESULT STDMETHODCALLTYPE GetCurrentService(Line21Service* service) override;
  HRESULT STDMETHODCALLTYPE SetCurrentService(Line21Service service) override;
  HRESULT STDMETHODCALLTYPE GetServiceState(Line21State* state) override;
  HRESULT STDMETHODCALLTYPE SetServiceState(Line21State state) override;
  HRESULT STDMETHODCALLTYPE GetOutputFormat(BITMAPINFOHEADER* format) override;
  HRESULT STDMETHODCALLTYPE SetOutputFormat(BITMAPINFO* format) override;
  HRESULT STDMETHODCALLTYPE GetBackgroundColor(DWORD* physicalColor) override;
  HRESULT STDMETHODCALLTYPE SetBackgroundColor(DWORD physicalColor) override;
  HRESULT STDMETHODCALLTYPE GetRedrawAlways(BOOL* redrawAlways) override;
  HRESULT STDMETHODCALLTYPE SetRedrawAlways(BOOL redrawAlways) override;
  HRESULT STDMETHODCALLTYPE GetDrawBackgroundMode(Line21Background* mode) override;
  HRESULT STDMETHODCALLTYPE SetDrawBackgroundMode(Line21Background mode) override;

 private:
  CaptionWishes& wishes;
};

}  // namespace quorvex
