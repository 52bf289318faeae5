#include "platform/tv/capture_filter.h"

#include <evcode.h>
#include <vfwmsgs.h>

namespace quorvex {

CaptureFilter::CaptureFilter(const CardTraits& itsTraits)
    : FilterBase(itsTraits.id),
      traits(itsTraits),
      reception(*card, traits),
      source(reception),
      controls(*this, source),
      tuner(*this, *card, reception),
      crossbar(*this, *card),
      hasCrossbar(traits.hasTuner && card->noCrossbar == 0),
      capturePin(*this, *this, source, *card),
      previewPin(*this, *this, source) {}

HRESULT CaptureFilter::GetState(DWORD timeoutMs, FILTER_STATE* current) {
  const HRESULT result = FilterBase::GetState(timeoutMs, current);
  return SUCCEEDED(result) && *current == State_Paused ? VFW_S_CANT_CUE : result;
}

void* CaptureFilter::Find(REFIID iid) {
  if (iid == __uuidof(IAMVideoProcAmp)) return static_cast<IAMVideoProcAmp*>(&controls);
  if (traits.hasTuner && iid == __uuidof(IAMTVTuner)) return static_cast<IAMTVTuner*>(&tuner);
  if (traits.hasTuner && iid == __uuidof(IAMTuner)) return static_cast<IAMTuner*>(&tuner);
  if (hasCrossbar && iid == __uuidof(IAMCrossbar)) return static_cast<IAMCrossbar*>(&crossbar);
  return FilterBase::Find(iid);
}

std::vector<LivePin*> CaptureFilter::LivePins() {
  std::vector<LivePin*> pins{&capturePin};
  if (traits.hasPreview) pins.push_back(&previewPin);
  return pins;
}

std::vector<IPin*> CaptureFilter::Pins() {
  const std::vector<LivePin*> pins = LivePins();
  return {pins.begin(), pins.end()};
}

HRESULT CaptureFilter::OnStart() {
  for (LivePin* pin : LivePins()) {
    if (const HRESULT result = pin->Begin(); FAILED(result)) {
      OnStop();
      return result;
    }
  }
  return S_OK;
}

void CaptureFilter::OnStop() {
  for (LivePin* pin : LivePins()) pin->End();
}

bool CaptureFilter::IsThere() {
  if (card->IsPlugged(traits.kind)) return !lost;
  if (!lost.exchange(true)) TellGraph(EC_DEVICE_LOST, reinterpret_cast<LONG_PTR>(static_cast<IBaseFilter*>(this)), 0);
  return false;
}

}  // namespace quorvex
