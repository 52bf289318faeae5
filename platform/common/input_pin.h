// The ground of the platform layer's input pins: being connected, and what comes from the pin at the other
// end. A filter says which types it takes and what it does with samples.
#pragma once

#include "platform/common/pin_base.h"

namespace quorvex {

class InputPin : public PinBase, public IMemInputPin {
 public:
  // `id` names the pin in its filter.
  InputPin(FilterBase& owner, std::wstring id) : PinBase(owner, std::move(id), PINDIR_INPUT) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    return PinBase::QueryInterface(iid, object);
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return PinBase::AddRef(); }
  ULONG STDMETHODCALLTYPE Release() override { return PinBase::Release(); }

  // It does not seek a connection.
  HRESULT STDMETHODCALLTYPE Connect(IPin*, const AM_MEDIA_TYPE*) override { return E_UNEXPECTED; }
  HRESULT STDMETHODCALLTYPE ReceiveConnection(IPin* connector, const AM_MEDIA_TYPE* type) override;
  HRESULT STDMETHODCALLTYPE QueryAccept(const AM_MEDIA_TYPE* type) override;
  HRESULT STDMETHODCALLTYPE EndOfStream() override;
  HRESULT STDMETHODCALLTYPE BeginFlush() override;
  HRESULT STDMETHODCALLTYPE EndFlush() override;
  HRESULT STDMETHODCALLTYPE NewSegment(REFERENCE_TIME, REFERENCE_TIME, double) override { return S_OK; }

  HRESULT STDMETHODCALLTYPE GetAllocator(IMemAllocator** allocator) override;
  HRESULT STDMETHODCALLTYPE NotifyAllocator(IMemAllocator* allocator, BOOL readOnly) override;
  HRESULT STDMETHODCALLTYPE GetAllocatorRequirements(ALLOCATOR_PROPERTIES*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Receive(IMediaSample* sample) override;
  HRESULT STDMETHODCALLTYPE ReceiveMultiple(IMediaSample** samples, LONG count, LONG* processed) override;
  HRESULT STDMETHODCALLTYPE ReceiveCanBlock() override { return S_OK; }

 protected:
  ~InputPin() = default;
  void* Find(REFIID iid) override { return FindInterface<IPin, IMemInputPin>(this, iid); }

  // Whether the pin can take samples of this type.
  virtual bool Takes(const AM_MEDIA_TYPE& type) = 0;

  // What arrives, on the stream's thread, unless the pin is flushing or its filter stopped. Answers what
  // IMemInputPin::Receive does; may wait.
  virtual HRESULT OnSample(IMediaSample& sample) = 0;
  virtual void OnEnd() = 0;

  // Between the two nothing arrives; who waits in OnSample returns at the first.
  virtual void OnBeginFlush() = 0;
  virtual void OnEndFlush() = 0;

 private:
  // S_OK when something may arrive.
  HRESULT State();
  // Whether a sample brings a type that was not agreed on.
  bool HasOtherType(IMediaSample& sample);

  std::atomic<bool> flushing{false};
};

}  // namespace quorvex
