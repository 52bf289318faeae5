#include "platform/sound/sound_renderer.h"

#include <evcode.h>
#include <mmreg.h>
#include <uuids.h>
#include <vfwmsgs.h>

namespace quorvex {
namespace {

constexpr DWORD kLowestRate = 8000;
constexpr DWORD kHighestRate = 96000;

// The description of plain sound; null when the type is not one.
const WAVEFORMAT* PlainSound(const AM_MEDIA_TYPE& type) {
  if (type.majortype != MEDIATYPE_Audio || type.formattype != FORMAT_WaveFormatEx) return nullptr;
  if (type.cbFormat < sizeof(PCMWAVEFORMAT) || type.pbFormat == nullptr) return nullptr;
  const auto* wave = reinterpret_cast<const WAVEFORMAT*>(type.pbFormat);
  return wave->wFormatTag == WAVE_FORMAT_PCM ? wave : nullptr;
}

int BitsOf(const AM_MEDIA_TYPE& type) {
  return reinterpret_cast<const PCMWAVEFORMAT*>(type.pbFormat)->wBitsPerSample;
}

}  // namespace

bool SoundPin::Takes(const AM_MEDIA_TYPE& type) {
  const WAVEFORMAT* wave = PlainSound(type);
  if (wave == nullptr || (wave->nChannels != 1 && wave->nChannels != 2)) return false;
  const int bits = BitsOf(type);
  return (bits == 8 || bits == 16) && wave->nBlockAlign == wave->nChannels * bits / 8 &&
         wave->nSamplesPerSec >= kLowestRate && wave->nSamplesPerSec <= kHighestRate;
}

WaveFormat SoundPin::Format() {
  const MediaType type = AgreedType();
  const WAVEFORMAT* wave = PlainSound(type.Get());
  if (wave == nullptr) return {};  // not connected
  return {static_cast<int>(wave->nSamplesPerSec), wave->nChannels, BitsOf(type.Get())};
}

HRESULT SoundPin::OnSample(IMediaSample& sample) {
  if (sample.IsPreroll() == S_OK) return S_OK;
  BYTE* data = nullptr;
  const HRESULT result = sample.GetPointer(&data);
  if (FAILED(result)) return result;
  REFERENCE_TIME start = 0;
  REFERENCE_TIME end = 0;
  std::optional<MediaTime> begin;
  if (SUCCEEDED(sample.GetTime(&start, &end))) begin = start;
  const auto bytes = static_cast<std::size_t>(sample.GetActualDataLength());
  switch (player.Add(begin, {reinterpret_cast<const std::byte*>(data), bytes})) {
    case SoundPlayer::Taken::kYes: return S_OK;
    case SoundPlayer::Taken::kFlushing: return S_FALSE;
    case SoundPlayer::Taken::kStopped: break;
  }
  return VFW_E_WRONG_STATE;
}

HRESULT PlayedStatistics::GetStatParam(DWORD which, DWORD* value, DWORD* second) {
  if (value == nullptr) return E_POINTER;
  const SoundPlayer::Counts counts = player.Counted();
  const auto tell = [&](MediaTime time) {
    *value = static_cast<DWORD>(time / kMillisecond);
    if (second != nullptr) *second = 0;
    return S_OK;
  };
  switch (which) {
    case AM_AUDREND_STAT_PARAM_SILENCE_DUR: return tell(counts.silence);
    case AM_AUDREND_STAT_PARAM_SLAVE_DROPWRITE_DUR: return tell(counts.dropped);
    case AM_AUDREND_STAT_PARAM_BUFFERFULLNESS: return tell(counts.waiting);
    default: return E_NOTIMPL;
  }
}

HRESULT SoundRenderer::OnStart() {
  player.Start(pin.Format());
  if (!pin.IsConnected()) player.End();
  return S_OK;
}

HRESULT SoundRenderer::Pause() {
  const HRESULT result = FilterBase::Pause();
  return result == S_OK && !player.AwaitCue(0) ? S_FALSE : result;
}

HRESULT SoundRenderer::GetState(DWORD timeoutMs, FILTER_STATE* current) {
  const HRESULT result = FilterBase::GetState(timeoutMs, current);
  if (FAILED(result) || *current != State_Paused) return result;
  return player.AwaitCue(timeoutMs) ? S_OK : VFW_S_STATE_INTERMEDIATE;
}

HRESULT SoundRenderer::SetSyncSource(IReferenceClock* source) {
  leads = source == &clock;
  return FilterBase::SetSyncSource(source);
}

void* SoundRenderer::Find(REFIID iid) {
  if (iid == IID_IBasicAudio || iid == IID_IDispatch) return static_cast<IBasicAudio*>(&volume);
  if (AnswersFor<IReferenceClock>(iid)) return static_cast<IReferenceClock*>(&clock);
  if (AnswersFor<IAMFilterMiscFlags>(iid)) return static_cast<IAMFilterMiscFlags*>(&flags);
  if (iid == IID_IAMAudioRendererStats) return static_cast<IAMAudioRendererStats*>(&statistics);
  if (SeekingPass::Answers(iid)) return seeking.Find(iid, *this, pin);
  return FilterBase::Find(iid);
}

void SoundRenderer::OnEarly(MediaTime earliness) {
  if (leads) clock.Correct(earliness);
}

void SoundRenderer::OnAllHeard() { Tell(EC_COMPLETE, S_OK, reinterpret_cast<LONG_PTR>(this)); }

}  // namespace quorvex
