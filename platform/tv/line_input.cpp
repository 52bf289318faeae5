#include "platform/tv/line_input.h"

#include <uuids.h>
#include <vfwmsgs.h>

#include <cstring>

namespace quorvex {
namespace {

std::int64_t SampleAt(MediaTime time, int rate) { return Rescale(time, rate, kSecond); }

}  // namespace

LinePin::LinePin(FilterBase& owner, LiveDevice& itsDevice, Reception& received)
    : LivePin(owner, itsDevice, L"Capture", PIN_CATEGORY_CAPTURE),
      reception(received),
      config(*this),
      control(*this, owner) {}

void* LinePin::Find(REFIID iid) {
  if (iid == __uuidof(IAMStreamConfig)) return static_cast<IAMStreamConfig*>(&config);
  if (iid == __uuidof(IAMStreamControl)) return static_cast<IAMStreamControl*>(&control);
  return LivePin::Find(iid);
}

std::vector<MediaType> LinePin::Types() { return {SoundTypeOf(config.Format())}; }

ALLOCATOR_PROPERTIES LinePin::BufferNeeds(const MediaType& type) {
  constexpr long kBuffers = 8;
  const WaveFormat asked = SoundFormatOf(type.Get()).value_or(WaveFormat{});
  const std::int64_t frames = SampleAt(FrameTime(), asked.rate) + 1;
  return {kBuffers, static_cast<long>(frames * asked.FrameBytes()), 1, 0};
}

void LinePin::OnBegin() {
  format = SoundFormatOf(AgreedType().Get()).value_or(config.Format());
  sound.emplace(format.rate);
}

void LinePin::Send(const FramePacer::Frame& frame) {
  if (!control.Passes(frame.begin)) return;
  const ComPtr<IMediaSample> sample = NextBuffer();
  const std::int64_t from = SampleAt(frame.begin, format.rate);
  const std::int64_t frames = SampleAt(frame.end, format.rate) - from;
  const auto bytes = static_cast<std::size_t>(frames * format.FrameBytes());
  BYTE* target = nullptr;
  if (!sample || FAILED(sample->GetPointer(&target)) || static_cast<std::size_t>(sample->GetSize()) < bytes)
    return;
  Fill({target, bytes}, frame);
  REFERENCE_TIME begin = frame.begin;
  REFERENCE_TIME end = frame.end;
  sample->SetActualDataLength(static_cast<long>(bytes));
  sample->SetTime(&begin, &end);
  sample->SetSyncPoint(TRUE);
  sample->SetDiscontinuity(frame.number == 0 ? TRUE : FALSE);
  Deliver(sample.Get());
}

void LinePin::Fill(std::span<BYTE> bytes, const FramePacer::Frame& frame) {
  samples.resize(bytes.size() / static_cast<std::size_t>(format.FrameBytes()) * kSoundChannels);
  sound->Fill(reception.Now(), SampleAt(frame.begin, format.rate), AirTimeOf(frame.begin), samples);
  std::size_t place = 0;
  for (std::size_t at = 0; at < samples.size(); at += kSoundChannels) {
    for (std::size_t channel = 0; channel < static_cast<std::size_t>(format.channels); ++channel) {
      const std::int16_t sample = samples[at + channel];
      if (format.bits == 16) {
        std::memcpy(&bytes[place], &sample, sizeof sample);
        place += sizeof sample;
      } else {
        bytes[place++] = static_cast<BYTE>((sample >> 8) + 128);
      }
    }
  }
}

LineInput::LineInput()
    : FilterBase(kLineInputClass), reception(*card, kCards.front()), pin(*this, *this, reception) {}

HRESULT LineInput::GetState(DWORD timeoutMs, FILTER_STATE* current) {
  const HRESULT result = FilterBase::GetState(timeoutMs, current);
  return SUCCEEDED(result) && *current == State_Paused ? VFW_S_CANT_CUE : result;
}

}  // namespace quorvex
