// IAMTVTuner of the TV card.
#pragma once

#include <windows.h>

#include <strmif.h>

#include <mutex>
#include <vector>

#include "base/com_ptr.h"
#include "platform/common/object_part.h"
#include "platform/tv/card_state.h"
#include "platform/tv/reception.h"

namespace quorvex {

class TvTuner final : public ObjectPart<IAMTVTuner> {
 public:
  TvTuner(IUnknown& filter, CardState& itsState, Reception& received)
      : ObjectPart(filter), state(itsState), reception(received) {}

  // NOLINTBEGIN(readability-identifier-naming): the platform's names
  // E_INVALIDARG for a number outside of ChannelMinMax; a number in between that is no channel shows noise.
  HRESULT STDMETHODCALLTYPE put_Channel(LONG channel, LONG videoSubChannel, LONG audioSubChannel) override;
  HRESULT STDMETHODCALLTYPE get_Channel(LONG* channel, LONG* videoSubChannel, LONG* audioSubChannel) override;
  HRESULT STDMETHODCALLTYPE ChannelMinMax(LONG* lowest, LONG* highest) override;
  HRESULT STDMETHODCALLTYPE put_CountryCode(LONG country) override;
  HRESULT STDMETHODCALLTYPE get_CountryCode(LONG* country) override;
  HRESULT STDMETHODCALLTYPE put_TuningSpace(LONG space) override;
  HRESULT STDMETHODCALLTYPE get_TuningSpace(LONG* space) override;
  HRESULT STDMETHODCALLTYPE Logon(HANDLE user) override;
  HRESULT STDMETHODCALLTYPE Logout() override;
  HRESULT STDMETHODCALLTYPE SignalPresent(LONG* strength) override;
  HRESULT STDMETHODCALLTYPE put_Mode(AMTunerModeType mode) override;
  HRESULT STDMETHODCALLTYPE get_Mode(AMTunerModeType* mode) override;
  HRESULT STDMETHODCALLTYPE GetAvailableModes(LONG* modes) override;
  HRESULT STDMETHODCALLTYPE RegisterNotificationCallBack(IAMTunerNotification* notified,
                                                         LONG events) override;
  HRESULT STDMETHODCALLTYPE UnRegisterNotificationCallBack(IAMTunerNotification* notified) override;

  HRESULT STDMETHODCALLTYPE get_AvailableTVFormats(LONG* standards) override;
  HRESULT STDMETHODCALLTYPE get_TVFormat(LONG* standard) override;
  HRESULT STDMETHODCALLTYPE AutoTune(LONG channel, LONG* signal) override;
  HRESULT STDMETHODCALLTYPE StoreAutoTune() override;
  HRESULT STDMETHODCALLTYPE get_NumInputConnections(LONG* number) override;
  HRESULT STDMETHODCALLTYPE put_InputType(LONG index, TunerInputType type) override;
  HRESULT STDMETHODCALLTYPE get_InputType(LONG index, TunerInputType* type) override;
  HRESULT STDMETHODCALLTYPE put_ConnectInput(LONG index) override;
  HRESULT STDMETHODCALLTYPE get_ConnectInput(LONG* index) override;
  HRESULT STDMETHODCALLTYPE get_VideoFrequency(LONG* hertz) override;
  HRESULT STDMETHODCALLTYPE get_AudioFrequency(LONG* hertz) override;
  // NOLINTEND(readability-identifier-naming)

 private:
  [[nodiscard]] int Country() const { return static_cast<int>(state.country); }
  [[nodiscard]] Carriers Tuned() const;
  void KeepInRange();
  std::vector<ComPtr<IAMTunerNotification>> Listeners();

  CardState& state;
  Reception& reception;
  LONG tuningSpace = 0;
  std::mutex lock;  // guards listeners
  std::vector<ComPtr<IAMTunerNotification>> listeners;
};

}  // namespace quorvex
