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
      dialogs(*this, traits, *card, source),
      tuner(*this, *card, reception),
      crossbar(*this, *card),
      hasCrossbar(traits.hasTuner && card->noCrossbar == 0),
      hasCaptions(traits.hasTuner && card->noCaptions == 0),
      capturePin(*this, *this, source, *card),
      previewPin(*this, *this, source, *card),
      vbiPin(*this, *this, source),
      videoPortPin(*this),
      cable(*this, reception) {}

HRESULT CaptureFilter::GetState(DWORD timeoutMs, FILTER_STATE* current) {
  const HRESULT result = FilterBase::GetState(timeoutMs, current);
  return SUCCEEDED(result) && *current == State_Paused ? VFW_S_CANT_CUE : result;
}

void* CaptureFilter::Find(REFIID iid) {
  if (iid == __uuidof(IAMVideoProcAmp)) return static_cast<IAMVideoProcAmp*>(&controls);
  if (iid == __uuidof(IAMVfwCaptureDialogs)) return static_cast<IAMVfwCaptureDialogs*>(&dialogs);
  if (traits.hasTuner && iid == __uuidof(IAMTVTuner)) return static_cast<IAMTVTuner*>(&tuner);
  if (traits.hasTuner && iid == __uuidof(IAMTuner)) return static_cast<IAMTuner*>(&tuner);
  if (hasCrossbar && iid == __uuidof(IAMCrossbar)) return static_cast<IAMCrossbar*>(&crossbar);
  return FilterBase::Find(iid);
}

std::vector<LivePin*> CaptureFilter::LivePins() {
  std::vector<LivePin*> pins{&capturePin};
  if (traits.hasPreview) pins.push_back(&previewPin);
  if (hasCaptions) pins.push_back(&vbiPin);
  return pins;
}

std::vector<IPin*> CaptureFilter::Pins() {
  const std::vector<LivePin*> live = LivePins();
  std::vector<IPin*> pins{live.begin(), live.end()};
  if (hasCaptions) pins.push_back(&videoPortPin);
  return pins;
}

HRESULT CaptureFilter::OnStart() {
  for (LivePin* pin : LivePins()) {
    if (const HRESULT result = pin->Begin(); FAILED(result)) {
      OnStop();
      return result;
    }
  }
  if (traits.hasTuner) cable.Begin();
  return S_OK;
}

void CaptureFilter::OnStop() {
  cable.End();
  for (LivePin* pin : LivePins()) pin->End();
}

bool CaptureFilter::IsThere() {
  if (card->IsPlugged(traits.kind)) return !lost;
  if (!lost.exchange(true))
    Tell(EC_DEVICE_LOST, reinterpret_cast<LONG_PTR>(static_cast<IBaseFilter*>(this)), 0);
  return false;
}

}  // namespace quorvex
