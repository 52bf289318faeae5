// The interfaces by which a multiplexer is set up, and asked how far it is.
#pragma once

#include <windows.h>

#include <strmif.h>

#include <atomic>
#include <functional>
#include <utility>

#include "platform/avi/avi_recorder.h"
#include "platform/common/filter_part.h"

namespace quorvex {

// Both can be changed while the graph is stopped (VFW_E_NOT_STOPPED).
class MuxSettings final : public FilterPart<IConfigAviMux> {
 public:
  using FilterPart::FilterPart;

  // The stream by which the others' rates go, in the order in which they were connected; -1 for none. A
  // stream may be named before it is connected.
  HRESULT STDMETHODCALLTYPE SetMasterStream(LONG stream) override;
  HRESULT STDMETHODCALLTYPE GetMasterStream(LONG* stream) override;
  // Whether the file has an index for old players.
  HRESULT STDMETHODCALLTYPE SetOutputCompatibilityIndex(BOOL wanted) override;
  HRESULT STDMETHODCALLTYPE GetOutputCompatibilityIndex(BOOL* wanted) override;

  [[nodiscard]] int Master() const { return master; }
  [[nodiscard]] bool OldIndex() const { return oldIndex; }

 private:
  std::atomic<int> master{AviRecorder::kNoMaster};
  std::atomic<bool> oldIndex{true};
};

// Streams that come in real time are interleaved as they come, which is what every mode asks for; the values
// are kept for who reads them.
class Interleaving final : public FilterPart<IConfigInterleaving> {
 public:
  using FilterPart::FilterPart;

  HRESULT STDMETHODCALLTYPE put_Mode(InterleavingMode wanted) override;
  HRESULT STDMETHODCALLTYPE get_Mode(InterleavingMode* told) override;
  HRESULT STDMETHODCALLTYPE put_Interleaving(const REFERENCE_TIME* interleave,
                                             const REFERENCE_TIME* preroll) override;
  HRESULT STDMETHODCALLTYPE get_Interleaving(REFERENCE_TIME* interleave, REFERENCE_TIME* preroll) override;

 private:
  std::atomic<InterleavingMode> mode{INTERLEAVE_CAPTURE};
  std::atomic<REFERENCE_TIME> interval{kSecond / 20};
  std::atomic<REFERENCE_TIME> lead{0};
};

// How long the recording is. Nobody can seek in one.
class RecordedPosition final : public ObjectPart<IMediaSeeking> {
 public:
  RecordedPosition(IUnknown& owner, std::function<MediaTime()> itsLength)
      : ObjectPart(owner), length(std::move(itsLength)) {}

  HRESULT STDMETHODCALLTYPE GetCapabilities(DWORD* capabilities) override;
  HRESULT STDMETHODCALLTYPE CheckCapabilities(DWORD* capabilities) override;
  HRESULT STDMETHODCALLTYPE IsFormatSupported(const GUID* format) override;
  HRESULT STDMETHODCALLTYPE QueryPreferredFormat(GUID* format) override;
  HRESULT STDMETHODCALLTYPE GetTimeFormat(GUID* format) override { return QueryPreferredFormat(format); }
  HRESULT STDMETHODCALLTYPE IsUsingTimeFormat(const GUID* format) override {
    return IsFormatSupported(format);
  }
  HRESULT STDMETHODCALLTYPE SetTimeFormat(const GUID* format) override;
  HRESULT STDMETHODCALLTYPE GetCurrentPosition(LONGLONG* told) override;
  HRESULT STDMETHODCALLTYPE GetDuration(LONGLONG*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetStopPosition(LONGLONG*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE ConvertTimeFormat(LONGLONG*, const GUID*, LONGLONG, const GUID*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE SetPositions(LONGLONG*, DWORD, LONGLONG*, DWORD) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetPositions(LONGLONG*, LONGLONG*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetAvailable(LONGLONG*, LONGLONG*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetRate(double) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetRate(double*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetPreroll(LONGLONG*) override { return E_NOTIMPL; }

 private:
  const std::function<MediaTime()> length;
};

}  // namespace quorvex
