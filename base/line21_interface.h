// The platform's interface of a line-21 (closed caption) decoder, IAMLine21Decoder, as its reference
// documents it; mingw-w64 has no header for it. The order of the methods is the interface's binary layout.
#pragma once

#include <windows.h>

#include <unknwn.h>

namespace quorvex {

inline constexpr GUID kClsidLine21Decoder = {
    0x6E8D4A20, 0x310C, 0x11D0, {0xB7, 0x9A, 0x00, 0xAA, 0x00, 0x37, 0x67, 0xA7}};
inline constexpr GUID kIidLine21Decoder = {
    0x6E8D4A21, 0x310C, 0x11D0, {0xB7, 0x9A, 0x00, 0xAA, 0x00, 0x37, 0x67, 0xA7}};

enum Line21Level { kLine21LevelTc2 = 0 };
enum Line21Service {
  kLine21ServiceNone = 0,
  kLine21ServiceCaption1,
  kLine21ServiceCaption2,
  kLine21ServiceText1,
  kLine21ServiceText2,
  kLine21ServiceXds,
  kLine21ServiceDefaultChannel = 10,
  kLine21ServiceInvalid
};
enum Line21State { kLine21StateOff = 0, kLine21StateOn = 1 };
enum Line21Background { kLine21BackgroundOpaque = 0, kLine21BackgroundTransparent = 1 };

// NOLINTBEGIN(readability-identifier-naming): the platform's names
struct IAMLine21Decoder : public IUnknown {
  virtual HRESULT STDMETHODCALLTYPE GetDecoderLevel(Line21Level* level) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetCurrentService(Line21Service* service) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetCurrentService(Line21Service service) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetServiceState(Line21State* state) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetServiceState(Line21State state) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetOutputFormat(BITMAPINFOHEADER* format) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetOutputFormat(BITMAPINFO* format) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetBackgroundColor(DWORD* physicalColor) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetBackgroundColor(DWORD physicalColor) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetRedrawAlways(BOOL* redrawAlways) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetRedrawAlways(BOOL redrawAlways) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetDrawBackgroundMode(Line21Background* mode) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetDrawBackgroundMode(Line21Background mode) = 0;
};
// NOLINTEND(readability-identifier-naming)

}  // namespace quorvex
