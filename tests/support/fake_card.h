// What a capture card offers beside its picture, as a test furnishes it: tuner, crossbar, formats, controls
// of the picture and dialogs.
#pragma once

#include <windows.h>

#include <strmif.h>

#include <amvideo.h>
#include <uuids.h>

#include <array>
#include <cstring>
#include <set>
#include <string>

#include "tests/support/com_fake.h"
#include "tests/support/fake_renderer.h"
#include "tests/support/queued_events.h"

namespace quorvex {

struct FakeAttribute {
  LONG minimum = 0;
  LONG maximum = 255;
  LONG value = 128;
};

struct CardScript : ComScript, EventQueue {
  FakeRenderer renderer{"SomeRenderer", this};
  GUID formatType = FORMAT_VideoInfo;
  LONG width = 320;
  LONG height = 240;
  LONG lowestChannel = 2;
  LONG highestChannel = 12;
  std::set<LONG> withSignal;
  std::array<FakeAttribute, 4> attributes;
  bool takesAnyValue = true;  // else what lies within an attribute's range only
  LONG framesCaptured = 0;
  LONG framesDropped = 0;
  LONGLONG recorded = 0;   // units of 100 ns
  LONGLONG recovered = 0;  // the same, of what is found beside the capture file
};

// A stream's format as its owner hands it out: who does not free it does not let go of the owner.
template <typename Format>
AM_MEDIA_TYPE* NewMediaType(const GUID& formatType, const Format& format, IUnknown& owner) {
  auto* const type = static_cast<AM_MEDIA_TYPE*>(::CoTaskMemAlloc(sizeof(AM_MEDIA_TYPE)));
  *type = {};
  type->formattype = formatType;
  type->pUnk = &owner;
  owner.AddRef();
  type->cbFormat = sizeof format;
  type->pbFormat = static_cast<BYTE*>(::CoTaskMemAlloc(sizeof format));
  std::memcpy(type->pbFormat, &format, sizeof format);
  return type;
}

class FakeTuner final : public ComFake<CardScript, IAMTVTuner> {
 public:
  explicit FakeTuner(CardScript& itsCard) : ComFake(itsCard, "tuner", {{{IID_IAMTVTuner, "IAMTVTuner"}}}) {}

  STDMETHODIMP put_InputType(LONG connection, TunerInputType type) override {
    EXPECT_EQ(connection, 0);
    return script.Call("put_InputType", std::to_string(type));
  }
  STDMETHODIMP ChannelMinMax(LONG* lowest, LONG* highest) override {
    const HRESULT result = script.Answer("ChannelMinMax");
    if (FAILED(result)) return result;
    *lowest = script.lowestChannel;
    *highest = script.highestChannel;
    return result;
  }
  STDMETHODIMP put_Channel(LONG channel, LONG video, LONG audio) override {
    EXPECT_EQ(video, -1);
    EXPECT_EQ(audio, -1);
    return script.Call("put_Channel", std::to_string(channel));
  }
  STDMETHODIMP AutoTune(LONG channel, LONG* signal) override {
    *signal = script.withSignal.count(channel) != 0 ? 1 : 0;
    return script.Call("AutoTune", std::to_string(channel));
  }
  STDMETHODIMP StoreAutoTune() override { return script.Call("StoreAutoTune"); }
  QUORVEX_UNEXPECTED(get_Channel, LONG*, LONG*, LONG*)
  QUORVEX_UNEXPECTED_PROPERTY(CountryCode, LONG)
  QUORVEX_UNEXPECTED_PROPERTY(TuningSpace, LONG)
  QUORVEX_UNEXPECTED(Logon, HANDLE)
  QUORVEX_UNEXPECTED(Logout)
  QUORVEX_UNEXPECTED(SignalPresent, LONG*)
  QUORVEX_UNEXPECTED_PROPERTY(Mode, AMTunerModeType)
  QUORVEX_UNEXPECTED(GetAvailableModes, LONG*)
  QUORVEX_UNEXPECTED(RegisterNotificationCallBack, IAMTunerNotification*, LONG)
  QUORVEX_UNEXPECTED(UnRegisterNotificationCallBack, IAMTunerNotification*)
  QUORVEX_UNEXPECTED(get_AvailableTVFormats, LONG*)
  QUORVEX_UNEXPECTED(get_TVFormat, LONG*)
  QUORVEX_UNEXPECTED(get_NumInputConnections, LONG*)
  QUORVEX_UNEXPECTED(get_InputType, LONG, TunerInputType*)
  QUORVEX_UNEXPECTED_PROPERTY(ConnectInput, LONG)
  QUORVEX_UNEXPECTED(get_VideoFrequency, LONG*)
  QUORVEX_UNEXPECTED(get_AudioFrequency, LONG*)
};

class FakeCrossbar final : public ComFake<CardScript, IAMCrossbar> {
 public:
  explicit FakeCrossbar(CardScript& itsCard)
      : ComFake(itsCard, "crossbar", {{{IID_IAMCrossbar, "IAMCrossbar"}}}) {}

  STDMETHODIMP Route(LONG output, LONG input) override {
    return script.Call("Route", std::to_string(output) + ' ' + std::to_string(input));
  }
  QUORVEX_UNEXPECTED(get_PinCounts, LONG*, LONG*)
  QUORVEX_UNEXPECTED(CanRoute, LONG, LONG)
  QUORVEX_UNEXPECTED(get_IsRoutedTo, LONG, LONG*)
  QUORVEX_UNEXPECTED(get_CrossbarPinInfo, BOOL, LONG, LONG*, LONG*)
};

class FakeStreamConfig final : public ComFake<CardScript, IAMStreamConfig> {
 public:
  FakeStreamConfig(CardScript& itsCard, const char* itsName)
      : ComFake(itsCard, itsName, {{{IID_IAMStreamConfig, "IAMStreamConfig"}}}) {}

  STDMETHODIMP GetFormat(AM_MEDIA_TYPE** type) override {
    *type = nullptr;
    if (const HRESULT result = script.Answer("GetFormat"); result != S_OK) return result;
    VIDEOINFOHEADER picture{};
    picture.bmiHeader.biWidth = script.width;
    picture.bmiHeader.biHeight = script.height;
    *type = NewMediaType(script.formatType, picture, *this);
    return S_OK;
  }
  STDMETHODIMP SetFormat(AM_MEDIA_TYPE* type) override {
    const auto* const picture = reinterpret_cast<const VIDEOINFOHEADER*>(type->pbFormat);
    return script.Call("SetFormat", std::to_string(picture->AvgTimePerFrame));
  }
  QUORVEX_UNEXPECTED(GetNumberOfCapabilities, int*, int*)
  QUORVEX_UNEXPECTED(GetStreamCaps, int, AM_MEDIA_TYPE**, BYTE*)
};

class FakePictureControls final : public ComFake<CardScript, IAMVideoProcAmp> {
 public:
  explicit FakePictureControls(CardScript& itsCard)
      : ComFake(itsCard, "controls", {{{IID_IAMVideoProcAmp, "IAMVideoProcAmp"}}}) {}

  STDMETHODIMP GetRange(LONG property, LONG* minimum, LONG* maximum, LONG* delta, LONG* usual,
                        LONG* flags) override {
    if (const HRESULT result = script.Answer("GetRange"); FAILED(result)) return result;
    *minimum = Attribute(property).minimum;
    *maximum = Attribute(property).maximum;
    *delta = 1;
    *usual = 128;
    *flags = VideoProcAmp_Flags_Manual;
    return S_OK;
  }
  STDMETHODIMP Set(LONG property, LONG value, LONG flags) override {
    EXPECT_EQ(flags, VideoProcAmp_Flags_Manual);
    FakeAttribute& attribute = Attribute(property);
    const bool within = value >= attribute.minimum && value <= attribute.maximum;
    const HRESULT result = script.Call("Set", std::to_string(property) + ' ' + std::to_string(value));
    if (!within && !script.takesAnyValue) return E_INVALIDARG;
    if (SUCCEEDED(result)) attribute.value = value;
    return result;
  }
  STDMETHODIMP Get(LONG property, LONG* value, LONG* flags) override {
    if (const HRESULT result = script.Answer("Get"); FAILED(result)) return result;
    *value = Attribute(property).value;
    *flags = VideoProcAmp_Flags_Manual;
    return S_OK;
  }

 private:
  FakeAttribute& Attribute(LONG property) { return script.attributes.at(static_cast<std::size_t>(property)); }
};

class FakeDialogs final : public ComFake<CardScript, IAMVfwCaptureDialogs> {
 public:
  explicit FakeDialogs(CardScript& itsCard)
      : ComFake(itsCard, "dialogs", {{{IID_IAMVfwCaptureDialogs, "IAMVfwCaptureDialogs"}}}) {}

  STDMETHODIMP HasDialog(int dialog) override { return script.Answer("HasDialog " + std::to_string(dialog)); }
  STDMETHODIMP ShowDialog(int dialog, HWND owner) override {
    EXPECT_TRUE(::IsWindow(owner));
    return script.Call("ShowDialog", std::to_string(dialog));
  }
  QUORVEX_UNEXPECTED(SendDriverMessage, int, int, LONG, LONG)
};

}  // namespace quorvex
