// A DVD navigator that does as its test says, found by the platform's own CoCreateInstance while this lives.
#pragma once

#include <windows.h>

#include <strmif.h>
#include <uuids.h>

#include <string>
#include <vector>

#include "base/com_ptr.h"
#include "tests/support/com_fake.h"
#include "tests/support/fake_captions.h"
#include "tests/support/fake_dvd_graph.h"

namespace quorvex {

struct FakeStream {
  LCID locale;
  char code[3];  // in the attributes
};

// The disc and the navigator's state.
struct DvdScript : GraphScript {
  AM_DVD_RENDERSTATUS status{};
  bool hasCaptions = true;
  DVD_DOMAIN domain = DVD_DOMAIN_Title;
  ULONG titleTime = 0x00003101;  // 01:31:00
  ULONG chapters = 25;
  std::vector<FakeStream> subtitles;
  std::vector<FakeStream> tracks;
  ULONG subtitle = 0;  // the current ones
  ULONG track = 0;
  bool subtitlesDisabled = true;
};

class FakeDvdControl final : public ComFake<DvdScript, IDvdControl> {
 public:
  explicit FakeDvdControl(DvdScript& itsScript)
      : ComFake(itsScript, "control", {{{IID_IDvdControl, "IID_IDvdControl"}}}) {}

  STDMETHODIMP ChapterPlay(ULONG title, ULONG chapter) override {
    return script.Call("ChapterPlay", std::to_string(title) + ' ' + std::to_string(chapter));
  }
  STDMETHODIMP ChapterSearch(ULONG chapter) override {
    return script.Call("ChapterSearch", std::to_string(chapter));
  }
  STDMETHODIMP PrevPGSearch() override { return script.Call("PrevPGSearch"); }
  STDMETHODIMP NextPGSearch() override { return script.Call("NextPGSearch"); }
  STDMETHODIMP ForwardScan(double speed) override {
    return script.Call("ForwardScan", std::to_string(static_cast<int>(speed)));
  }
  STDMETHODIMP BackwardScan(double speed) override {
    return script.Call("BackwardScan", std::to_string(static_cast<int>(speed)));
  }
  STDMETHODIMP MenuCall(DVD_MENU_ID menu) override { return script.Call("MenuCall", std::to_string(menu)); }
  STDMETHODIMP Resume() override { return script.Call("Resume"); }
  STDMETHODIMP UpperButtonSelect() override { return script.Call("UpperButtonSelect"); }
  STDMETHODIMP LowerButtonSelect() override { return script.Call("LowerButtonSelect"); }
  STDMETHODIMP LeftButtonSelect() override { return script.Call("LeftButtonSelect"); }
  STDMETHODIMP RightButtonSelect() override { return script.Call("RightButtonSelect"); }
  STDMETHODIMP ButtonActivate() override { return script.Call("ButtonActivate"); }
  STDMETHODIMP AudioStreamChange(ULONG stream) override {
    const HRESULT result = script.Call("AudioStreamChange", std::to_string(stream));
    if (SUCCEEDED(result)) script.track = stream;
    return result;
  }
  STDMETHODIMP SubpictureStreamChange(ULONG stream, BOOL display) override {
    const HRESULT result =
        script.Call("SubpictureStreamChange", std::to_string(stream) + ' ' + std::to_string(display));
    if (FAILED(result)) return result;
    script.subtitle = stream;
    script.subtitlesDisabled = display == FALSE;
    return result;
  }
  QUORVEX_UNEXPECTED(MouseActivate, POINT)
  QUORVEX_UNEXPECTED(MouseSelect, POINT)
  QUORVEX_UNEXPECTED(TitlePlay, ULONG)
  QUORVEX_UNEXPECTED(TimePlay, ULONG, ULONG)
  QUORVEX_UNEXPECTED(StopForResume)
  QUORVEX_UNEXPECTED(GoUp)
  QUORVEX_UNEXPECTED(TimeSearch, ULONG)
  QUORVEX_UNEXPECTED(TopPGSearch)
  QUORVEX_UNEXPECTED(ButtonSelectAndActivate, ULONG)
  QUORVEX_UNEXPECTED(StillOff)
  QUORVEX_UNEXPECTED(PauseOn)
  QUORVEX_UNEXPECTED(PauseOff)
  QUORVEX_UNEXPECTED(MenuLanguageSelect, LCID)
  QUORVEX_UNEXPECTED(AngleChange, ULONG)
  QUORVEX_UNEXPECTED(ParentalLevelSelect, ULONG)
  QUORVEX_UNEXPECTED(ParentalCountrySelect, WORD)
  QUORVEX_UNEXPECTED(KaraokeAudioPresentationModeChange, ULONG)
  QUORVEX_UNEXPECTED(VideoModePreferrence, ULONG)
  QUORVEX_UNEXPECTED(SetRoot, LPCWSTR)
  QUORVEX_UNEXPECTED(ChapterPlayAutoStop, ULONG, ULONG, ULONG)
};

class FakeDvdInfo final : public ComFake<DvdScript, IDvdInfo> {
 public:
  explicit FakeDvdInfo(DvdScript& itsScript)
      : ComFake(itsScript, "info", {{{IID_IDvdInfo, "IID_IDvdInfo"}}}) {}

  STDMETHODIMP GetCurrentDomain(DVD_DOMAIN* domain) override {
    return script.Tell("GetCurrentDomain", domain, script.domain);
  }
  STDMETHODIMP GetTotalTitleTime(ULONG* time) override {
    return script.Tell("GetTotalTitleTime", time, script.titleTime);
  }
  STDMETHODIMP GetNumberOfChapters(ULONG title, ULONG* chapters) override {
    const HRESULT result = script.Call("GetNumberOfChapters", std::to_string(title));
    if (SUCCEEDED(result)) *chapters = script.chapters;
    return result;
  }
  STDMETHODIMP GetCurrentAudio(ULONG* count, ULONG* current) override {
    *count = static_cast<ULONG>(script.tracks.size());
    return script.Tell("GetCurrentAudio", current, script.track);
  }
  STDMETHODIMP GetCurrentSubpicture(ULONG* count, ULONG* current, BOOL* disabled) override {
    *count = static_cast<ULONG>(script.subtitles.size());
    *current = script.subtitle;
    *disabled = script.subtitlesDisabled ? TRUE : FALSE;
    return script.Answer("GetCurrentSubpicture");
  }
  STDMETHODIMP GetAudioLanguage(ULONG stream, LCID* language) override {
    *language = script.tracks[stream].locale;
    return script.Answer("GetAudioLanguage");
  }
  STDMETHODIMP GetSubpictureLanguage(ULONG stream, LCID* language) override {
    *language = script.subtitles[stream].locale;
    return script.Answer("GetSubpictureLanguage");
  }
  STDMETHODIMP GetCurrentAudioAttributes(DVD_AudioATR* attributes) override {
    return FillAttributes(script.tracks[script.track], *attributes, "GetCurrentAudioAttributes");
  }
  STDMETHODIMP GetCurrentSubpictureAttributes(DVD_SubpictureATR* attributes) override {
    return FillAttributes(script.subtitles[script.subtitle], *attributes, "GetCurrentSubpictureAttributes");
  }
  QUORVEX_UNEXPECTED(GetCurrentLocation, DVD_PLAYBACK_LOCATION*)
  QUORVEX_UNEXPECTED(GetCurrentButton, ULONG*, ULONG*)
  QUORVEX_UNEXPECTED(GetCurrentAngle, ULONG*, ULONG*)
  QUORVEX_UNEXPECTED(GetCurrentUOPS, VALID_UOP_SOMTHING_OR_OTHER*)
  QUORVEX_UNEXPECTED(GetAllSPRMs, SPRMARRAY*)
  QUORVEX_UNEXPECTED(GetAllGPRMs, GPRMARRAY*)
  QUORVEX_UNEXPECTED(GetTitleAttributes, ULONG, DVD_ATR*)
  QUORVEX_UNEXPECTED(GetVMGAttributes, DVD_ATR*)
  QUORVEX_UNEXPECTED(GetCurrentVideoAttributes, DVD_VideoATR*)
  QUORVEX_UNEXPECTED(GetCurrentVolumeInfo, ULONG*, ULONG*, DVD_DISC_SIDE*, ULONG*)
  QUORVEX_UNEXPECTED(GetDVDTextInfo, BYTE*, ULONG, ULONG*)
  QUORVEX_UNEXPECTED(GetPlayerParentalLevel, ULONG*, ULONG*)
  QUORVEX_UNEXPECTED(GetTitleParentalLevels, ULONG, ULONG*)
  QUORVEX_UNEXPECTED(GetRoot, LPSTR, ULONG, ULONG*)

 private:
  template <std::size_t kSize>
  HRESULT FillAttributes(const FakeStream& stream, BYTE (&attributes)[kSize], const char* call) const {
    attributes[2] = static_cast<BYTE>(stream.code[0]);
    attributes[3] = static_cast<BYTE>(stream.code[1]);
    return script.Answer(call);
  }
};

class FakeDvdBuilder final : public ComFake<DvdScript, IDvdGraphBuilder> {
 public:
  explicit FakeDvdBuilder(DvdScript& itsScript)
      : ComFake(itsScript, "builder", {{{IID_IDvdGraphBuilder, "IID_IDvdGraphBuilder"}}}) {}

  STDMETHODIMP RenderDvdVideoVolume(LPCWSTR path, DWORD flags, AM_DVD_RENDERSTATUS* status) override {
    *status = script.status;
    return script.Call("Render", path == nullptr ? std::to_string(flags) : "a path");
  }
  STDMETHODIMP GetFiltergraph(IGraphBuilder** graph) override {
    const HRESULT result = script.Call("GetFiltergraph");
    *graph = SUCCEEDED(result) ? new FakeDvdGraph(script) : nullptr;
    return result;
  }
  STDMETHODIMP GetDvdInterface(REFIID iid, void** object) override {
    if (iid == IID_IDvdControl) return Hand(new FakeDvdControl(script), iid, object);
    if (iid == IID_IDvdInfo) return Hand(new FakeDvdInfo(script), iid, object);
    if (iid == kIidLine21Decoder && script.hasCaptions) return Hand(new FakeCaptions(script), iid, object);
    *object = nullptr;
    return E_NOINTERFACE;
  }

 private:
  static HRESULT Hand(IUnknown* made, REFIID iid, void** object) {
    const auto owned = ComPtr<IUnknown>::Attach(made);
    return owned->QueryInterface(iid, object);
  }
};

class FakeDvd final : public DvdScript {
  FakeClass builders{CLSID_DvdGraphBuilder, [this](REFIID, void** object) {
                       const HRESULT result = Call("Create");
                       if (SUCCEEDED(result)) *object = new FakeDvdBuilder(*this);
                       return result;
                     }};
};

}  // namespace quorvex
