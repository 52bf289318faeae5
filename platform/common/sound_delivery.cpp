#include "platform/common/sound_delivery.h"

#include <algorithm>

namespace quorvex {

Fed SoundDelivery::Deliver(SoundSamples samples, MediaTime begin) {
  const auto total = static_cast<std::int64_t>(samples.size() / kSoundChannels);
  for (std::int64_t at = 0; at < total;) {
    const std::int64_t count = std::min<std::int64_t>(total - at, SamplesPerBuffer(rate));
    const SoundSamples part = samples.subspan(static_cast<std::size_t>(at * kSoundChannels),
                                              static_cast<std::size_t>(count * kSoundChannels));
    const Fed fed =
        Send(part, begin + Rescale(at, kSecond, rate), begin + Rescale(at + count, kSecond, rate));
    if (fed != Fed::kMore) return fed;
    at += count;
  }
  return Fed::kMore;
}

Fed SoundDelivery::Send(SoundSamples samples, MediaTime begin, MediaTime end) {
  const ComPtr<IMediaSample> sample = pin.NextBuffer();
  BYTE* target = nullptr;
  if (!sample || FAILED(sample->GetPointer(&target)) ||
      static_cast<std::size_t>(sample->GetSize()) < samples.size_bytes())
    return Fed::kRefused;
  std::copy_n(reinterpret_cast<const BYTE*>(samples.data()), samples.size_bytes(), target);
  sample->SetActualDataLength(static_cast<long>(samples.size_bytes()));
  sample->SetTime(&begin, &end);
  sample->SetSyncPoint(TRUE);
  sample->SetPreroll(FALSE);
  sample->SetDiscontinuity(first ? TRUE : FALSE);
  first = false;
  return pin.Deliver(sample.Get()) == S_OK ? Fed::kMore : Fed::kRefused;
}

}  // namespace quorvex
