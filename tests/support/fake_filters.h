// Filters of a capture graph that connect and disconnect, and write down what becomes of them.
#pragma once

#include <windows.h>

#include <strmif.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "base/com_ptr.h"
#include "tests/support/com_fake.h"

namespace quorvex {

struct FakePinFacts {
  const char* name;
  PIN_DIRECTION direction;
};

class FakeFilter;

// Lives with its filter, whose references it hands out.
class FakePin final : public IPin {
 public:
  FakePin(FakeFilter& itsFilter, FakePinFacts itsFacts) : filter(itsFilter), facts(itsFacts) {}
  FakePin(const FakePin&) = delete;
  FakePin& operator=(const FakePin&) = delete;
  ~FakePin() { Part(); }

  FakeFilter& filter;
  FakePinFacts facts;
  FakePin* peer = nullptr;

  void Join(FakePin& other) {
    Part();
    other.Part();
    peer = &other;
    other.peer = this;
  }
  void Part() {
    if (peer != nullptr) peer->peer = nullptr;
    peer = nullptr;
  }
  [[nodiscard]] std::string Name() const;

  STDMETHODIMP QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
  STDMETHODIMP_(ULONG) AddRef() override;
  STDMETHODIMP_(ULONG) Release() override;
  STDMETHODIMP ConnectedTo(IPin** pin) override {
    const HRESULT result = Answer("ConnectedTo");
    *pin = SUCCEEDED(result) ? peer : nullptr;
    if (FAILED(result)) return result;
    if (peer == nullptr) return VFW_E_NOT_CONNECTED;
    peer->AddRef();
    return result;
  }
  STDMETHODIMP QueryPinInfo(PIN_INFO* info) override;
  QUORVEX_UNEXPECTED(Connect, IPin*, const AM_MEDIA_TYPE*)
  QUORVEX_UNEXPECTED(ReceiveConnection, IPin*, const AM_MEDIA_TYPE*)
  QUORVEX_UNEXPECTED(Disconnect)
  QUORVEX_UNEXPECTED(ConnectionMediaType, AM_MEDIA_TYPE*)
  QUORVEX_UNEXPECTED(QueryDirection, PIN_DIRECTION*)
  QUORVEX_UNEXPECTED(QueryId, LPWSTR*)
  QUORVEX_UNEXPECTED(QueryAccept, const AM_MEDIA_TYPE*)
  QUORVEX_UNEXPECTED(EnumMediaTypes, IEnumMediaTypes**)
  QUORVEX_UNEXPECTED(QueryInternalConnections, IPin**, ULONG*)
  QUORVEX_UNEXPECTED(EndOfStream)
  QUORVEX_UNEXPECTED(BeginFlush)
  QUORVEX_UNEXPECTED(EndFlush)
  QUORVEX_UNEXPECTED(NewSegment, REFERENCE_TIME, REFERENCE_TIME, double)

 private:
  [[nodiscard]] HRESULT Answer(const char* name) const;
};

class FakePinList final : public ComFake<ComScript, IEnumPins> {
 public:
  FakePinList(ComScript& itsScript, const std::vector<std::unique_ptr<FakePin>>& itsPins)
      : ComFake(itsScript, "", {{{IID_IEnumPins, "IEnumPins"}}}), pins(itsPins) {}

  STDMETHODIMP Next(ULONG count, IPin** pin, ULONG*) override {
    EXPECT_EQ(count, 1U);
    if (const HRESULT result = script.Answer("NextPin"); FAILED(result)) return result;
    if (next == pins.size()) return S_FALSE;
    *pin = pins[next++].get();
    (*pin)->AddRef();
    return S_OK;
  }
  QUORVEX_UNEXPECTED(Skip, ULONG)
  QUORVEX_UNEXPECTED(Reset)
  QUORVEX_UNEXPECTED(Clone, IEnumPins**)

 private:
  const std::vector<std::unique_ptr<FakePin>>& pins;
  std::size_t next = 0;
};

class FakeFilter final : public ComFake<ComScript, IBaseFilter> {
 public:
  // `itsName` must outlive it.
  FakeFilter(ComScript& itsScript, const char* itsName, const std::vector<FakePinFacts>& itsPins)
      : ComFake(itsScript, itsName, {{{IID_IBaseFilter, "IBaseFilter"}}}), name(itsName) {
    for (const FakePinFacts& facts : itsPins) pins.push_back(std::make_unique<FakePin>(*this, facts));
  }

  const char* name;
  std::vector<std::unique_ptr<FakePin>> pins;
  std::function<ComPtr<IUnknown>(REFIID)> beside;  // makes what it offers beside the filter

  FakePin& Pin(const std::string& pinName) {
    return **std::find_if(pins.begin(), pins.end(),
                          [&](const auto& pin) { return pin->facts.name == pinName; });
  }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    const ComPtr<IUnknown> other = beside ? beside(iid) : nullptr;
    return other ? other->QueryInterface(iid, object) : ComFake::QueryInterface(iid, object);
  }
  STDMETHODIMP EnumPins(IEnumPins** list) override {
    const HRESULT result = Answer("EnumPins");
    *list = SUCCEEDED(result) ? new FakePinList(script, pins) : nullptr;
    return result;
  }
  HRESULT Answer(const char* call) { return script.Answer(call); }
  QUORVEX_UNEXPECTED(GetClassID, CLSID*)
  QUORVEX_UNEXPECTED(Stop)
  QUORVEX_UNEXPECTED(Pause)
  QUORVEX_UNEXPECTED(Run, REFERENCE_TIME)
  QUORVEX_UNEXPECTED(GetState, DWORD, FILTER_STATE*)
  QUORVEX_UNEXPECTED(SetSyncSource, IReferenceClock*)
  QUORVEX_UNEXPECTED(GetSyncSource, IReferenceClock**)
  QUORVEX_UNEXPECTED(FindPin, LPCWSTR, IPin**)
  QUORVEX_UNEXPECTED(QueryFilterInfo, FILTER_INFO*)
  QUORVEX_UNEXPECTED(JoinFilterGraph, IFilterGraph*, LPCWSTR)
  QUORVEX_UNEXPECTED(QueryVendorInfo, LPWSTR*)
};

inline std::string FakePin::Name() const { return std::string(filter.name) + '.' + facts.name; }
inline ULONG FakePin::AddRef() { return filter.AddRef(); }
inline ULONG FakePin::Release() { return filter.Release(); }
inline HRESULT FakePin::Answer(const char* name) const { return filter.Answer(name); }
inline HRESULT FakePin::QueryPinInfo(PIN_INFO* info) {
  const HRESULT result = Answer("QueryPinInfo");
  if (FAILED(result)) return result;
  filter.AddRef();
  info->pFilter = &filter;
  info->dir = facts.direction;
  ::MultiByteToWideChar(CP_ACP, 0, facts.name, -1, info->achName, MAX_PIN_NAME);
  return result;
}

}  // namespace quorvex
