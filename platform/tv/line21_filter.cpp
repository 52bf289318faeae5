#include "platform/tv/line21_filter.h"

namespace quorvex {

Line21Filter::Line21Filter()
    : ChainFilter(kClsidLine21Decoder, {L"Line21 Input"}, {L"Line21 Output"}), control(*this, wishes) {}

void* Line21Filter::Find(REFIID iid) {
  if (iid == kIidLine21Decoder) return static_cast<IAMLine21Decoder*>(&control);
  return ChainFilter::Find(iid);
}

bool Line21Filter::Takes(std::size_t, const AM_MEDIA_TYPE& type) { return IsOfKind(type, BytePairType()); }

void Line21Filter::OnBegin() {
  decoder = {};
  sent = {};
}

HRESULT Line21Filter::Take(std::size_t, IMediaSample& sample) {
  const SampleBytes pair = BytesOf(sample);
  if (pair.size != kPairBytes) return S_OK;
  if (decoder.Channel() != wishes.channel) decoder.SetChannel(wishes.channel);
  decoder.Feed(1, pair.data[0], pair.data[1]);
  const ShownCaptions now{wishes.shown ? decoder.Shown() : CaptionScreen{}, wishes.opaque};
  const bool changed = now.screen != sent.screen || now.opaque != sent.opaque;
  return changed ? Show(now) : S_OK;
}

HRESULT Line21Filter::Show(const ShownCaptions& captions) {
  if (!Output(0).IsConnected()) return S_OK;
  const ComPtr<IMediaSample> sample = Output(0).NextBuffer();
  if (!sample || !FillSample(*sample.Get(), &captions, sizeof captions)) return S_FALSE;
  sent = captions;
  return Output(0).Deliver(sample.Get());
}

}  // namespace quorvex
