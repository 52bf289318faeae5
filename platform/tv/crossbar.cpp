#include "platform/tv/crossbar.h"

#include "platform/common/answer.h"
#include "platform/tv/crossbar_pins.h"

namespace quorvex {
namespace {

constexpr LONG kPictureOutput = 0;
constexpr LONG kOutputs = static_cast<LONG>(kCrossbarOutputs.size());
constexpr LONG kInputs = static_cast<LONG>(kCrossbarInputs.size());

bool IsOutput(LONG pin) { return pin >= 0 && pin < kOutputs; }
bool IsInput(LONG pin) { return pin >= 0 && pin < kInputs; }

}  // namespace

HRESULT Crossbar::get_PinCounts(LONG* outputs, LONG* inputs) {
  if (outputs == nullptr) return E_POINTER;
  *outputs = kOutputs;
  return Answer(inputs, kInputs);
}

HRESULT Crossbar::CanRoute(LONG output, LONG input) {
  if (!IsOutput(output) || !IsInput(input)) return E_INVALIDARG;
  return (output == kPictureOutput) == (input < kCrossbarPictures) ? S_OK : S_FALSE;
}

// The sound goes with its picture.
HRESULT Crossbar::Route(LONG output, LONG input) {
  const HRESULT result = CanRoute(output, input);
  if (result != S_OK) return FAILED(result) ? result : E_FAIL;
  if (state.refuseRoute != 0) return E_FAIL;
  const long picture =
      output == kPictureOutput ? input : kCrossbarInputs[static_cast<std::size_t>(input)].related;
  state.routed = static_cast<std::uint32_t>(picture);
  return S_OK;
}

HRESULT Crossbar::get_IsRoutedTo(LONG output, LONG* input) {
  if (!IsOutput(output)) return E_INVALIDARG;
  const auto picture = static_cast<std::size_t>(state.routed) % static_cast<std::size_t>(kCrossbarPictures);
  return Answer(input,
                output == kPictureOutput ? static_cast<LONG>(picture) : kCrossbarInputs[picture].related);
}

HRESULT Crossbar::get_CrossbarPinInfo(BOOL isInput, LONG index, LONG* related, LONG* type) {
  if (isInput != FALSE ? !IsInput(index) : !IsOutput(index)) return E_INVALIDARG;
  const auto at = static_cast<std::size_t>(index);
  const CrossbarPin& pin = isInput != FALSE ? kCrossbarInputs[at] : kCrossbarOutputs[at];
  if (related == nullptr) return E_POINTER;
  *related = pin.related;
  return Answer(type, pin.type);
}

}  // namespace quorvex
