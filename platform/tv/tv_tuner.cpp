#include "platform/tv/tv_tuner.h"

#include <algorithm>

#include "platform/common/answer.h"

namespace quorvex {
namespace {

// What a tuner takes to find out whether there is a signal.
constexpr DWORD kLockMs = 20;

LONG StandardOf(int country) {
  if (country == 81) return AnalogVideo_NTSC_M_J;
  const bool american = CarriersOf(country, TunerInput::kAntenna, 2).value_or(Carriers{}).video == 55'250'000;
  return american ? AnalogVideo_NTSC_M : AnalogVideo_PAL_B;
}

}  // namespace

HRESULT TvTuner::put_Channel(LONG channel, LONG, LONG) {
  const ChannelRange range = ChannelsOf(Country(), state.Input());
  if (channel < range.lowest || channel > range.highest) return E_INVALIDARG;
  const ULONGLONG begun = ::GetTickCount64();
  while (::GetTickCount64() - begun < state.slowTuner) ::Sleep(kLockMs);
  state.channel = static_cast<std::uint32_t>(channel);
  // They may come and go meanwhile.
  const std::vector<ComPtr<IAMTunerNotification>> told = Listeners();
  for (const auto& listener : told) listener->OnEvent(AMTUNER_EVENT_CHANGED);
  return S_OK;
}

HRESULT TvTuner::get_Channel(LONG* channel, LONG* videoSubChannel, LONG* audioSubChannel) {
  if (videoSubChannel == nullptr || audioSubChannel == nullptr) return E_POINTER;
  *videoSubChannel = *audioSubChannel = AMTUNER_SUBCHAN_DEFAULT;
  return Answer(channel, state.channel.load());
}

HRESULT TvTuner::ChannelMinMax(LONG* lowest, LONG* highest) {
  if (lowest == nullptr) return E_POINTER;
  const ChannelRange range = ChannelsOf(Country(), state.Input());
  *lowest = range.lowest;
  return Answer(highest, range.highest);
}

HRESULT TvTuner::put_CountryCode(LONG country) {
  if (!HasChannelPlan(country)) return E_INVALIDARG;
  state.country = static_cast<std::uint32_t>(country);
  KeepInRange();
  return S_OK;
}

HRESULT TvTuner::get_CountryCode(LONG* country) { return Answer(country, state.country.load()); }

HRESULT TvTuner::put_TuningSpace(LONG space) {
  tuningSpace = space;
  return S_OK;
}

HRESULT TvTuner::get_TuningSpace(LONG* space) { return Answer(space, tuningSpace); }

// Who watches is all the same to it.
HRESULT TvTuner::Logon(HANDLE) { return E_NOTIMPL; }
HRESULT TvTuner::Logout() { return E_NOTIMPL; }

HRESULT TvTuner::SignalPresent(LONG* strength) {
  const bool signal = reception.HasSignal(state.Input(), static_cast<int>(state.channel));
  return Answer(strength, signal ? AMTUNER_SIGNALPRESENT : AMTUNER_NOSIGNAL);
}

HRESULT TvTuner::put_Mode(AMTunerModeType mode) { return mode == AMTUNER_MODE_TV ? S_OK : E_FAIL; }
HRESULT TvTuner::get_Mode(AMTunerModeType* mode) { return Answer(mode, AMTUNER_MODE_TV); }
HRESULT TvTuner::GetAvailableModes(LONG* modes) { return Answer(modes, AMTUNER_MODE_TV); }

HRESULT TvTuner::RegisterNotificationCallBack(IAMTunerNotification* notified, LONG events) {
  if (notified == nullptr) return E_POINTER;
  if (events != AMTUNER_EVENT_CHANGED) return E_INVALIDARG;
  const std::scoped_lock guard(lock);
  listeners.push_back(ComPtr<IAMTunerNotification>::Share(notified));
  return S_OK;
}

HRESULT TvTuner::UnRegisterNotificationCallBack(IAMTunerNotification* notified) {
  const std::scoped_lock guard(lock);
  const auto gone =
      std::erase_if(listeners, [=](const auto& listener) { return listener.Get() == notified; });
  return gone > 0 ? S_OK : E_INVALIDARG;
}

HRESULT TvTuner::get_AvailableTVFormats(LONG* standards) {
  return Answer(standards, AnalogVideo_NTSC_M | AnalogVideo_NTSC_M_J | AnalogVideo_PAL_B);
}

HRESULT TvTuner::get_TVFormat(LONG* standard) { return Answer(standard, StandardOf(Country())); }

HRESULT TvTuner::AutoTune(LONG channel, LONG* signal) {
  if (signal == nullptr) return E_POINTER;
  *signal = AMTUNER_NOSIGNAL;
  const HRESULT result = put_Channel(channel, AMTUNER_SUBCHAN_DEFAULT, AMTUNER_SUBCHAN_DEFAULT);
  if (FAILED(result)) return result;
  ::Sleep(kLockMs);
  return SignalPresent(signal);
}

// The stations are always where they are said to be: there is no fine tuning to be kept.
HRESULT TvTuner::StoreAutoTune() { return S_OK; }

HRESULT TvTuner::get_NumInputConnections(LONG* number) { return Answer(number, 1); }

HRESULT TvTuner::put_InputType(LONG index, TunerInputType type) {
  if (index != 0 || (type != TunerInputCable && type != TunerInputAntenna)) return E_INVALIDARG;
  if (state.refuseInput != 0) return E_FAIL;
  state.antenna = type == TunerInputAntenna ? 1 : 0;
  KeepInRange();
  return S_OK;
}

HRESULT TvTuner::get_InputType(LONG index, TunerInputType* type) {
  if (index != 0) return E_INVALIDARG;
  return Answer(type, state.antenna != 0 ? TunerInputAntenna : TunerInputCable);
}

HRESULT TvTuner::put_ConnectInput(LONG index) { return index == 0 ? S_OK : E_INVALIDARG; }
HRESULT TvTuner::get_ConnectInput(LONG* index) { return Answer(index, 0); }
HRESULT TvTuner::get_VideoFrequency(LONG* hertz) { return Answer(hertz, Tuned().video); }
HRESULT TvTuner::get_AudioFrequency(LONG* hertz) { return Answer(hertz, Tuned().audio); }

std::vector<ComPtr<IAMTunerNotification>> TvTuner::Listeners() {
  const std::scoped_lock guard(lock);
  return listeners;
}

Carriers TvTuner::Tuned() const {
  return CarriersOf(Country(), state.Input(), static_cast<int>(state.channel)).value_or(Carriers{});
}

void TvTuner::KeepInRange() {
  const ChannelRange range = ChannelsOf(Country(), state.Input());
  const int channel = std::clamp(static_cast<int>(state.channel), range.lowest, range.highest);
  state.channel = static_cast<std::uint32_t>(channel);
}

}  // namespace quorvex
