// Volume and balance of the sound renderer, as programs set them.
#pragma once

#include <windows.h>

#include <strmif.h>

#include <control.h>

#include <atomic>

#include "platform/common/filter_part.h"
#include "platform/sound/sound_gain.h"

namespace quorvex {

class VolumeControl final : public FilterPart<IBasicAudio> {
 public:
  using FilterPart::FilterPart;

  HRESULT STDMETHODCALLTYPE put_Volume(long to) override { return Put(volume, to, kSilentVolume, 0); }
  HRESULT STDMETHODCALLTYPE get_Volume(long* told) override { return Get(volume, told); }
  HRESULT STDMETHODCALLTYPE put_Balance(long to) override {
    return Put(balance, to, -kFullBalance, kFullBalance);
  }
  HRESULT STDMETHODCALLTYPE get_Balance(long* told) override { return Get(balance, told); }

  // Not for scripts: the graph's own interface is.
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    if (count == nullptr) return E_POINTER;
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                   UINT*) override {
    return E_NOTIMPL;
  }

  [[nodiscard]] SoundGain Gain() const {
    return GainOf(static_cast<int>(volume.load()), static_cast<int>(balance.load()));
  }

 private:
  static HRESULT Put(std::atomic<long>& value, long to, long lowest, long highest) {
    if (to < lowest || to > highest) return E_INVALIDARG;
    value = to;
    return S_OK;
  }
  static HRESULT Get(const std::atomic<long>& value, long* told) {
    if (told == nullptr) return E_POINTER;
    *told = value;
    return S_OK;
  }

  std::atomic<long> volume{0};
  std::atomic<long> balance{0};
};

}  // namespace quorvex
