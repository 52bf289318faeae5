// An output pin of the media source: one type, and IMediaSeeking for the whole source.
#pragma once

#include "platform/common/output_pin.h"
#include "platform/media/shared_seeks.h"

namespace quorvex {

// What is sought in, by whichever pin. Times count from the file's beginning.
class Seekable {
 public:
  // Plays what is wished from now on; `pin` is where the wish arrived.
  virtual void SeekTo(int pin, const SeekWish& wish) = 0;
  // What is to be played.
  virtual Segment Played() = 0;
  // The place reached.
  virtual MediaTime Position() = 0;
  [[nodiscard]] virtual MediaTime Duration() const = 0;

 protected:
  ~Seekable() = default;
};

class MediaPin final : public OutputPin, public IMediaSeeking {
 public:
  // `number` tells the pins of a source apart.
  MediaPin(FilterBase& owner, Seekable& source, int number, const wchar_t* id, MediaType offered,
           ALLOCATOR_PROPERTIES buffers);

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    return OutputPin::QueryInterface(iid, object);
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return OutputPin::AddRef(); }
  ULONG STDMETHODCALLTYPE Release() override { return OutputPin::Release(); }

  HRESULT STDMETHODCALLTYPE GetCapabilities(DWORD* capabilities) override;
  HRESULT STDMETHODCALLTYPE CheckCapabilities(DWORD* capabilities) override;
  HRESULT STDMETHODCALLTYPE IsFormatSupported(const GUID* format) override;
  HRESULT STDMETHODCALLTYPE QueryPreferredFormat(GUID* format) override;
  HRESULT STDMETHODCALLTYPE GetTimeFormat(GUID* format) override;
  HRESULT STDMETHODCALLTYPE IsUsingTimeFormat(const GUID* format) override;
  HRESULT STDMETHODCALLTYPE SetTimeFormat(const GUID* format) override;
  HRESULT STDMETHODCALLTYPE GetDuration(LONGLONG* duration) override;
  HRESULT STDMETHODCALLTYPE GetStopPosition(LONGLONG* stop) override;
  HRESULT STDMETHODCALLTYPE GetCurrentPosition(LONGLONG* current) override;
  HRESULT STDMETHODCALLTYPE ConvertTimeFormat(LONGLONG* target, const GUID* targetFormat, LONGLONG source,
                                              const GUID* sourceFormat) override;
  HRESULT STDMETHODCALLTYPE SetPositions(LONGLONG* current, DWORD currentFlags, LONGLONG* stop,
                                         DWORD stopFlags) override;
  HRESULT STDMETHODCALLTYPE GetPositions(LONGLONG* current, LONGLONG* stop) override;
  HRESULT STDMETHODCALLTYPE GetAvailable(LONGLONG* earliest, LONGLONG* latest) override;
  HRESULT STDMETHODCALLTYPE SetRate(double rate) override;
  HRESULT STDMETHODCALLTYPE GetRate(double* rate) override;
  HRESULT STDMETHODCALLTYPE GetPreroll(LONGLONG* preroll) override;

 protected:
  void* Find(REFIID iid) override { return FindInterface<IPin, IMediaSeeking>(this, iid); }
  std::vector<MediaType> Types() override { return {type}; }
  [[nodiscard]] bool LaysOut() const override { return true; }
  ALLOCATOR_PROPERTIES BufferNeeds(const MediaType&) override { return needs; }

 private:
  Seekable& sought;
  const int place;
  const MediaType type;
  const ALLOCATOR_PROPERTIES needs;
};

}  // namespace quorvex
