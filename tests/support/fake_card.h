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

class FakeTuner final : public ComFake<IAMTVTuner> {
 public:
  explicit FakeTuner(CardScript& itsCard)
      : ComFake(itsCard, "tuner", {{{IID_IAMTVTuner, "IAMTVTuner"}}}), card(itsCard) {}

  STDMETHODIMP put_InputType(LONG connection, TunerInputType type) override {
    EXPECT_EQ(connection, 0);
    return card.Call("put_InputType", std::to_string(type));
  }
  STDMETHODIMP ChannelMinMax(LONG* lowest, LONG* highest) override {
    const HRESULT result = card.Answer("ChannelMinMax");
    if (FAILED(result)) return result;
    *lowest = card.lowestChannel;
    *highest = card.highestChannel;
    return result;
  }
  STDMETHODIMP put_Channel(LONG channel, LONG video, LONG audio) override {
    EXPECT_EQ(video, -1);
    EXPECT_EQ(audio, -1);
    return card.Call("put_Channel", std::to_string(channel));
  }
  STDMETHODIMP AutoTune(LONG channel, LONG* signal) override {
    *signal = card.withSignal.count(channel) != 0 ? 1 : 0;
    return card.Call("AutoTune", std::to_string(channel));
  }
  STDMETHODIMP StoreAutoTune() override { return card.Call("StoreAutoTune"); }
  QUORVEX_UNEXPECTED(get_Channel, LONG*, LONG*, LONG*)
  QUORVEX_UNEXPECTED(put_CountryCode, LONG)
  QUORVEX_UNEXPECTED(get_CountryCode, LONG*)
  QUORVEX_UNEXPECTED(put_TuningSpace, LONG)
  QUORVEX_UNEXPECTED(get_TuningSpace, LONG*)
  QUORVEX_UNEXPECTED(Logon, HANDLE)
  QUORVEX_UNEXPECTED(Logout)
  QUORVEX_UNEXPECTED(SignalPresent, LONG*)
  QUORVEX_UNEXPECTED(put_Mode, AMTunerModeType)
  QUORVEX_UNEXPECTED(get_Mode, AMTunerModeType*)
  QUORVEX_UNEXPECTED(GetAvailableModes, LONG*)
  QUORVEX_UNEXPECTED(RegisterNotificationCallBack, IAMTunerNotification*, LONG)
  QUORVEX_UNEXPECTED(UnRegisterNotificationCallBack, IAMTunerNotification*)
  QUORVEX_UNEXPECTED(get_AvailableTVFormats, LONG*)
  QUORVEX_UNEXPECTED(get_TVFormat, LONG*)
  QUORVEX_UNEXPECTED(get_NumInputConnections, LONG*)
  QUORVEX_UNEXPECTED(get_InputType, LONG, TunerInputType*)
  QUORVEX_UNEXPECTED(put_ConnectInput, LONG)
  QUORVEX_UNEXPECTED(get_ConnectInput, LONG*)
  QUORVEX_UNEXPECTED(get_VideoFrequency, LONG*)
  QUORVEX_UNEXPECTED(get_AudioFrequency, LONG*)

 private:
  CardScript& card;
};

class FakeCrossbar final : public ComFake<IAMCrossbar> {
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

class FakeStreamConfig final : public ComFake<IAMStreamConfig> {
 public:
  FakeStreamConfig(CardScript& itsCard, const char* itsName)
      : ComFake(itsCard, itsName, {{{IID_IAMStreamConfig, "IAMStreamConfig"}}}), card(itsCard) {}

  STDMETHODIMP GetFormat(AM_MEDIA_TYPE** type) override {
    *type = nullptr;
    if (const HRESULT result = card.Answer("GetFormat"); result != S_OK) return result;
    VIDEOINFOHEADER picture{};
    picture.bmiHeader.biWidth = card.width;
    picture.bmiHeader.biHeight = card.height;
    *type = static_cast<AM_MEDIA_TYPE*>(::CoTaskMemAlloc(sizeof(AM_MEDIA_TYPE)));
    **type = {};
    (*type)->formattype = card.formatType;
    (*type)->pUnk = this;  // who does not free the format does not let go of this
    AddRef();
    (*type)->cbFormat = sizeof picture;
    (*type)->pbFormat = static_cast<BYTE*>(::CoTaskMemAlloc(sizeof picture));
    std::memcpy((*type)->pbFormat, &picture, sizeof picture);
    return S_OK;
  }
  STDMETHODIMP SetFormat(AM_MEDIA_TYPE* type) override {
    const auto* const picture = reinterpret_cast<const VIDEOINFOHEADER*>(type->pbFormat);
    return card.Call("SetFormat", std::to_string(picture->AvgTimePerFrame));
  }
  QUORVEX_UNEXPECTED(GetNumberOfCapabilities, int*, int*)
  QUORVEX_UNEXPECTED(GetStreamCaps, int, AM_MEDIA_TYPE**, BYTE*)

 private:
  CardScript& card;
};

class FakePictureControls final : public ComFake<IAMVideoProcAmp> {
 public:
  explicit FakePictureControls(CardScript& itsCard)
      : ComFake(itsCard, "controls", {{{IID_IAMVideoProcAmp, "IAMVideoProcAmp"}}}), card(itsCard) {}

  STDMETHODIMP GetRange(LONG property, LONG* minimum, LONG* maximum, LONG* delta, LONG* usual,
                        LONG* flags) override {
    if (const HRESULT result = card.Answer("GetRange"); FAILED(result)) return result;
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
    const HRESULT result = card.Call("Set", std::to_string(property) + ' ' + std::to_string(value));
    if (!within && !card.takesAnyValue) return E_INVALIDARG;
    if (SUCCEEDED(result)) attribute.value = value;
    return result;
  }
  STDMETHODIMP Get(LONG property, LONG* value, LONG* flags) override {
    if (const HRESULT result = card.Answer("Get"); FAILED(result)) return result;
    *value = Attribute(property).value;
    *flags = VideoProcAmp_Flags_Manual;
    return S_OK;
  }

 private:
  FakeAttribute& Attribute(LONG property) { return card.attributes.at(static_cast<std::size_t>(property)); }

  CardScript& card;
};

class FakeDialogs final : public ComFake<IAMVfwCaptureDialogs> {
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
