// The ground of the platform layer's output pins: connecting, agreeing on type and allocator, and delivering
// to the pin at the other end.
#pragma once

#include "platform/common/pin_base.h"

namespace quorvex {

class OutputPin : public PinBase {
 public:
  // `id` names the pin in its filter.
  OutputPin(FilterBase& owner, std::wstring id) : PinBase(owner, std::move(id), PINDIR_OUTPUT) {}

  HRESULT STDMETHODCALLTYPE Connect(IPin* receiver, const AM_MEDIA_TYPE* wanted) override;
  HRESULT STDMETHODCALLTYPE ReceiveConnection(IPin* connector, const AM_MEDIA_TYPE* type) override;
  HRESULT STDMETHODCALLTYPE QueryAccept(const AM_MEDIA_TYPE* type) override;
  // These come to input pins only.
  HRESULT STDMETHODCALLTYPE EndOfStream() override { return E_UNEXPECTED; }
  HRESULT STDMETHODCALLTYPE BeginFlush() override { return E_UNEXPECTED; }
  HRESULT STDMETHODCALLTYPE EndFlush() override { return E_UNEXPECTED; }
  HRESULT STDMETHODCALLTYPE NewSegment(REFERENCE_TIME, REFERENCE_TIME, double) override { return S_OK; }

  // The allocator gives buffers from Start until Stop, which also releases who waits for one.
  HRESULT Start();
  void Stop();

  // A free buffer; waits for one. Null when the pin is stopped or not connected.
  ComPtr<IMediaSample> NextBuffer();

  // The other end has asked for another type, which holds from now on.
  void Adopt(const MediaType& type);

  // Hands a sample on; S_OK when more is wanted. May wait as long as the receiver likes.
  HRESULT Deliver(IMediaSample* sample);

  // The same call at the pin at the other end; nothing when there is none.
  void DeliverEndOfStream();
  void DeliverBeginFlush();
  void DeliverEndFlush();
  void DeliverNewSegment(REFERENCE_TIME start, REFERENCE_TIME stop);

 protected:
  ~OutputPin() = default;

  // How many buffers of which size this type takes, at the least.
  virtual ALLOCATOR_PROPERTIES BufferNeeds(const MediaType& type) = 0;

  // Whether pictures are given in the layout that the other end wishes (PictureDelivery); else as offered.
  [[nodiscard]] virtual bool LaysOut() const { return false; }

 private:
  // Whether what is offered is what a type asks for.
  [[nodiscard]] bool Serves(const MediaType& offered, const AM_MEDIA_TYPE& type) const;
  HRESULT TryType(IPin* receiver, const MediaType& type);
  HRESULT AgreeOnAllocator(Connection& made);
  static HRESULT UseAllocator(Connection& made, ALLOCATOR_PROPERTIES needs);
};

}  // namespace quorvex
