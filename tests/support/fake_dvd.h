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

class FakeDvdControl final : public ComFake<IDvdControl> {
 public:
  explicit FakeDvdControl(DvdScript& itsScript)
      : ComFake(itsScript, "control", {{{IID_IDvdControl, "IID_IDvdControl"}}}), dvd(itsScript) {}

  STDMETHODIMP ChapterPlay(ULONG title, ULONG chapter) override {
    return dvd.Call("ChapterPlay", std::to_string(title) + ' ' + std::to_string(chapter));
  }
  STDMETHODIMP ChapterSearch(ULONG chapter) override {
    return dvd.Call("ChapterSearch", std::to_string(chapter));
  }
  STDMETHODIMP PrevPGSearch() override { return dvd.Call("PrevPGSearch"); }
  STDMETHODIMP NextPGSearch() override { return dvd.Call("NextPGSearch"); }
  STDMETHODIMP ForwardScan(double speed) override {
    return dvd.Call("ForwardScan", std::to_string(static_cast<int>(speed)));
  }
  STDMETHODIMP BackwardScan(double speed) override {
    return dvd.Call("BackwardScan", std::to_string(static_cast<int>(speed)));
  }
  STDMETHODIMP MenuCall(DVD_MENU_ID menu) override { return dvd.Call("MenuCall", std::to_string(menu)); }
  STDMETHODIMP Resume() override { return dvd.Call("Resume"); }
  STDMETHODIMP UpperButtonSelect() override { return dvd.Call("UpperButtonSelect"); }
  STDMETHODIMP LowerButtonSelect() override { return dvd.Call("LowerButtonSelect"); }
  STDMETHODIMP LeftButtonSelect() override { return dvd.Call("LeftButtonSelect"); }
  STDMETHODIMP RightButtonSelect() override { return dvd.Call("RightButtonSelect"); }
  STDMETHODIMP ButtonActivate() override { return dvd.Call("ButtonActivate"); }
  STDMETHODIMP MouseActivate(POINT point) override { return dvd.Call("MouseActivate", Text(point)); }
  STDMETHODIMP MouseSelect(POINT point) override { return dvd.Call("MouseSelect", Text(point)); }
  STDMETHODIMP AudioStreamChange(ULONG stream) override {
    const HRESULT result = dvd.Call("AudioStreamChange", std::to_string(stream));
    if (SUCCEEDED(result)) dvd.track = stream;
    return result;
  }
  STDMETHODIMP SubpictureStreamChange(ULONG stream, BOOL display) override {
    const HRESULT result =
        dvd.Call("SubpictureStreamChange", std::to_string(stream) + ' ' + std::to_string(display));
    if (FAILED(result)) return result;
    dvd.subtitle = stream;
    dvd.subtitlesDisabled = display == FALSE;
    return result;
  }
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

 private:
  static std::string Text(POINT point) { return std::to_string(point.x) + ',' + std::to_string(point.y); }

  DvdScript& dvd;
};

class FakeDvdInfo final : public ComFake<IDvdInfo> {
 public:
  explicit FakeDvdInfo(DvdScript& itsScript)
      : ComFake(itsScript, "info", {{{IID_IDvdInfo, "IID_IDvdInfo"}}}), dvd(itsScript) {}

  STDMETHODIMP GetCurrentDomain(DVD_DOMAIN* domain) override {
    *domain = dvd.domain;
    return dvd.Answer("GetCurrentDomain");
  }
  STDMETHODIMP GetTotalTitleTime(ULONG* time) override {
    const HRESULT result = dvd.Answer("GetTotalTitleTime");
    if (SUCCEEDED(result)) *time = dvd.titleTime;
    return result;
  }
  STDMETHODIMP GetNumberOfChapters(ULONG title, ULONG* chapters) override {
    const HRESULT result = dvd.Call("GetNumberOfChapters", std::to_string(title));
    if (SUCCEEDED(result)) *chapters = dvd.chapters;
    return result;
  }
  STDMETHODIMP GetCurrentAudio(ULONG* count, ULONG* current) override {
    *count = static_cast<ULONG>(dvd.tracks.size());
    *current = dvd.track;
    return dvd.Answer("GetCurrentAudio");
  }
  STDMETHODIMP GetCurrentSubpicture(ULONG* count, ULONG* current, BOOL* disabled) override {
    *count = static_cast<ULONG>(dvd.subtitles.size());
    *current = dvd.subtitle;
    *disabled = dvd.subtitlesDisabled ? TRUE : FALSE;
    return dvd.Answer("GetCurrentSubpicture");
  }
  STDMETHODIMP GetAudioLanguage(ULONG stream, LCID* language) override {
    *language = dvd.tracks[stream].locale;
    return dvd.Answer("GetAudioLanguage");
  }
  STDMETHODIMP GetSubpictureLanguage(ULONG stream, LCID* language) override {
    *language = dvd.subtitles[stream].locale;
    return dvd.Answer("GetSubpictureLanguage");
  }
  STDMETHODIMP GetCurrentAudioAttributes(DVD_AudioATR* attributes) override {
    return FillAttributes(dvd.tracks[dvd.track], *attributes, "GetCurrentAudioAttributes");
  }
  STDMETHODIMP GetCurrentSubpictureAttributes(DVD_SubpictureATR* attributes) override {
    return FillAttributes(dvd.subtitles[dvd.subtitle], *attributes, "GetCurrentSubpictureAttributes");
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
    return dvd.Answer(call);
  }

  DvdScript& dvd;
};

class FakeDvdBuilder final : public ComFake<IDvdGraphBuilder> {
 public:
  explicit FakeDvdBuilder(DvdScript& itsScript)
      : ComFake(itsScript, "builder", {{{IID_IDvdGraphBuilder, "IID_IDvdGraphBuilder"}}}), dvd(itsScript) {}

  STDMETHODIMP RenderDvdVideoVolume(LPCWSTR path, DWORD flags, AM_DVD_RENDERSTATUS* status) override {
    *status = dvd.status;
    return dvd.Call("Render", path == nullptr ? std::to_string(flags) : "a path");
  }
  STDMETHODIMP GetFiltergraph(IGraphBuilder** graph) override {
    const HRESULT result = dvd.Call("GetFiltergraph");
    *graph = SUCCEEDED(result) ? new FakeDvdGraph(dvd) : nullptr;
    return result;
  }
  STDMETHODIMP GetDvdInterface(REFIID iid, void** object) override {
    if (iid == IID_IDvdControl) return Hand(new FakeDvdControl(dvd), iid, object);
    if (iid == IID_IDvdInfo) return Hand(new FakeDvdInfo(dvd), iid, object);
    if (iid == kIidLine21Decoder && dvd.hasCaptions) return Hand(new FakeCaptions(dvd), iid, object);
    *object = nullptr;
    return E_NOINTERFACE;
  }

 private:
  static HRESULT Hand(IUnknown* made, REFIID iid, void** object) {
    const auto owned = ComPtr<IUnknown>::Attach(made);
    return owned->QueryInterface(iid, object);
  }

  DvdScript& dvd;
};

class FakeDvd final : public DvdScript {
  FakeClass builders{CLSID_DvdGraphBuilder, [this](REFIID, void** object) {
                       const HRESULT result = Call("Create");
                       if (SUCCEEDED(result)) *object = new FakeDvdBuilder(*this);
                       return result;
                     }};
};

}  // namespace quorvex
