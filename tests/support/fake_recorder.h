// What a graph records with: multiplexer and file writer, and the counts of the capture stream.
#pragma once

#include <windows.h>

#include <mmreg.h>
#include <strmif.h>
#include <uuids.h>

#include <string>

#include "tests/support/com_fake.h"
#include "tests/support/fake_card.h"
#include "tests/support/fake_filters.h"
#include "tests/support/graph_parts.h"

namespace quorvex {

// Wide text that a fake is told, for the log.
inline std::string Narrow(LPCOLESTR text) {
  char narrow[400] = "";
  ::WideCharToMultiByte(CP_ACP, 0, text, -1, narrow, sizeof narrow, nullptr, nullptr);
  return narrow;
}

class FakeMuxSettings final : public ComFake<ComScript, IConfigAviMux> {
 public:
  explicit FakeMuxSettings(ComScript& itsScript)
      : ComFake(itsScript, "mux settings", {{{IID_IConfigAviMux, "IConfigAviMux"}}}) {}

  STDMETHODIMP SetMasterStream(LONG stream) override {
    return script.Call("SetMasterStream", std::to_string(stream));
  }
  STDMETHODIMP SetOutputCompatibilityIndex(BOOL old) override {
    return script.Call("SetOutputCompatibilityIndex", std::to_string(old));
  }
  QUORVEX_UNEXPECTED(GetMasterStream, LONG*)
  QUORVEX_UNEXPECTED(GetOutputCompatibilityIndex, BOOL*)
};

class FakeFileWriter final : public ComFake<ComScript, IFileSinkFilter> {
 public:
  explicit FakeFileWriter(ComScript& itsScript)
      : ComFake(itsScript, "writer", {{{IID_IFileSinkFilter, "IFileSinkFilter"}}}) {}

  STDMETHODIMP SetFileName(LPCOLESTR path, const AM_MEDIA_TYPE* type) override {
    EXPECT_EQ(type, nullptr);
    return script.Call("SetFileName", Narrow(path));
  }
  QUORVEX_UNEXPECTED(GetCurFile, LPOLESTR*, AM_MEDIA_TYPE*)
};

// The sound input's format: plain 16-bit stereo of 44.1 kHz.
class FakeSoundConfig final : public ComFake<ComScript, IAMStreamConfig> {
 public:
  explicit FakeSoundConfig(ComScript& itsScript)
      : ComFake(itsScript, "audio stream", {{{IID_IAMStreamConfig, "IAMStreamConfig"}}}) {}

  STDMETHODIMP GetFormat(AM_MEDIA_TYPE** type) override {
    *type = nullptr;
    if (const HRESULT result = script.Answer("GetSoundFormat"); FAILED(result)) return result;
    const WAVEFORMATEX sound{WAVE_FORMAT_PCM, 2, 44100, 176400, 4, 16, 0};
    *type = NewMediaType(FORMAT_WaveFormatEx, sound, *this);
    return S_OK;
  }
  STDMETHODIMP SetFormat(AM_MEDIA_TYPE* type) override {
    const auto* const sound = reinterpret_cast<const WAVEFORMATEX*>(type->pbFormat);
    EXPECT_EQ(type->cbFormat, sizeof *sound + sound->cbSize);
    return script.Call("SetSoundFormat",
                       std::to_string(sound->nSamplesPerSec) + ' ' + std::to_string(sound->nChannels));
  }
  QUORVEX_UNEXPECTED(GetNumberOfCapabilities, int*, int*)
  QUORVEX_UNEXPECTED(GetStreamCaps, int, AM_MEDIA_TYPE**, BYTE*)
};

class FakeFrameCounts final : public ComFake<CardScript, IAMDroppedFrames> {
 public:
  explicit FakeFrameCounts(CardScript& itsCard)
      : ComFake(itsCard, "", {{{IID_IAMDroppedFrames, "IAMDroppedFrames"}}}) {}

  STDMETHODIMP GetNumNotDropped(LONG* number) override {
    return script.Tell("GetNumNotDropped", number, script.framesCaptured);
  }
  STDMETHODIMP GetNumDropped(LONG* number) override {
    return script.Tell("GetNumDropped", number, script.framesDropped);
  }
  QUORVEX_UNEXPECTED(GetDroppedInfo, LONG, LONG*, LONG*)
  QUORVEX_UNEXPECTED(GetAverageFrameSize, LONG*)
};

class FakeMuxPosition final : public ComFake<CardScript, NoMediaSeeking> {
 public:
  explicit FakeMuxPosition(CardScript& itsCard)
      : ComFake(itsCard, "", {{{IID_IMediaSeeking, "IMediaSeeking"}}}) {}

  STDMETHODIMP GetCurrentPosition(LONGLONG* time) override {
    return script.Tell("GetCurrentPosition", time, script.recorded);
  }
};

// A multiplexer with two inputs.
inline ComPtr<FakeFilter> MakeMultiplexer(CardScript& card) {
  auto mux = ComPtr<FakeFilter>::Attach(
      new FakeFilter(card, "mux", {{"First", PINDIR_INPUT}, {"Second", PINDIR_INPUT}}));
  mux->beside = [&card](REFIID iid) -> ComPtr<IUnknown> {
    if (iid == IID_IMediaSeeking) return ComPtr<IUnknown>::Attach(new FakeMuxPosition(card));
    if (iid != IID_IConfigAviMux) return nullptr;
    return ComPtr<IUnknown>::Attach(new FakeMuxSettings(card));
  };
  return mux;
}

}  // namespace quorvex
