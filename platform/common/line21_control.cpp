#include "platform/common/line21_control.h"

#include <algorithm>
#include <iterator>

#include "platform/common/answer.h"

namespace quorvex {
namespace {

struct ServiceChannel {
  Line21Service service;
  Line21Channel channel;
};
// The first row of a channel is what it is told as.
constexpr ServiceChannel kServices[] = {
    {kLine21ServiceNone, Line21Channel::kNone},
    {kLine21ServiceCaption1, Line21Channel::kCaption1},
    {kLine21ServiceCaption2, Line21Channel::kCaption2},
    {kLine21ServiceText1, Line21Channel::kText1},
    {kLine21ServiceText2, Line21Channel::kText2},
    {kLine21ServiceDefaultChannel, Line21Channel::kCaption1},
};

}  // namespace

HRESULT Line21Control::GetDecoderLevel(Line21Level* level) { return Answer(level, kLine21LevelTc2); }

HRESULT Line21Control::GetCurrentService(Line21Service* service) {
  const auto row = std::find_if(std::begin(kServices), std::end(kServices),
                                [this](const ServiceChannel& one) { return one.channel == wishes.channel; });
  return Answer(service, row->service);
}

HRESULT Line21Control::SetCurrentService(Line21Service service) {
  const auto row = std::find_if(std::begin(kServices), std::end(kServices),
                                [=](const ServiceChannel& one) { return one.service == service; });
  if (row == std::end(kServices)) return E_INVALIDARG;
  wishes.channel = row->channel;
  return S_OK;
}

HRESULT Line21Control::GetServiceState(Line21State* state) {
  return Answer(state, wishes.shown ? kLine21StateOn : kLine21StateOff);
}

HRESULT Line21Control::SetServiceState(Line21State state) {
  if (state != kLine21StateOn && state != kLine21StateOff) return E_INVALIDARG;
  wishes.shown = state == kLine21StateOn;
  return S_OK;
}

// Captions are drawn into the picture itself: there is no picture of their own with a format and a colour.
HRESULT Line21Control::GetOutputFormat(BITMAPINFOHEADER*) { return E_NOTIMPL; }
HRESULT Line21Control::SetOutputFormat(BITMAPINFO*) { return E_NOTIMPL; }
HRESULT Line21Control::GetBackgroundColor(DWORD*) { return E_NOTIMPL; }
HRESULT Line21Control::SetBackgroundColor(DWORD) { return E_NOTIMPL; }
HRESULT Line21Control::GetRedrawAlways(BOOL* redrawAlways) { return Answer(redrawAlways, BOOL{TRUE}); }
HRESULT Line21Control::SetRedrawAlways(BOOL) { return S_OK; }

HRESULT Line21Control::GetDrawBackgroundMode(Line21Background* mode) {
  return Answer(mode, wishes.opaque ? kLine21BackgroundOpaque : kLine21BackgroundTransparent);
}

HRESULT Line21Control::SetDrawBackgroundMode(Line21Background mode) {
  if (mode != kLine21BackgroundOpaque && mode != kLine21BackgroundTransparent) return E_INVALIDARG;
  wishes.opaque = mode == kLine21BackgroundOpaque;
  return S_OK;
}

}  // namespace quorvex
