// A decoder of line 21 that writes down what it is told.
#pragma once

#include <string>

#include "base/line21_interface.h"
#include "tests/support/com_fake.h"

namespace quorvex {

class FakeCaptions final : public ComFake<ComScript, IAMLine21Decoder> {
 public:
  explicit FakeCaptions(ComScript& itsScript)
      : ComFake(itsScript, "captions", {{{kIidLine21Decoder, "IID_IAMLine21Decoder"}}}) {}

  STDMETHODIMP SetServiceState(Line21State state) override {
    return script.Call("SetServiceState", std::to_string(state));
  }
  STDMETHODIMP SetDrawBackgroundMode(Line21Background mode) override {
    return script.Call("SetDrawBackgroundMode", std::to_string(mode));
  }
  QUORVEX_UNEXPECTED(GetDecoderLevel, Line21Level*)
  QUORVEX_UNEXPECTED(GetCurrentService, Line21Service*)
  QUORVEX_UNEXPECTED(SetCurrentService, Line21Service)
  QUORVEX_UNEXPECTED(GetServiceState, Line21State*)
  QUORVEX_UNEXPECTED(GetOutputFormat, BITMAPINFOHEADER*)
  QUORVEX_UNEXPECTED(SetOutputFormat, BITMAPINFO*)
  QUORVEX_UNEXPECTED(GetBackgroundColor, DWORD*)
  QUORVEX_UNEXPECTED(SetBackgroundColor, DWORD)
  QUORVEX_UNEXPECTED(GetRedrawAlways, BOOL*)
  QUORVEX_UNEXPECTED(SetRedrawAlways, BOOL)
  QUORVEX_UNEXPECTED(GetDrawBackgroundMode, Line21Background*)
};

}  // namespace quorvex
