// A video renderer as far as its window goes: it follows its owner, its place and its drain, and writes down
// what it was told.
#pragma once

#include <windows.h>

#include <strmif.h>

#include <control.h>

#include "base/geometry.h"
#include "tests/support/com_fake.h"

namespace quorvex {

class FakeRenderer final : public NoDispatch<IVideoWindow> {
 public:
  // `className`: what the window's class is called. `itsScript`: what its calls are answered; none: success.
  explicit FakeRenderer(const char* className = "SomeRenderer", ComScript* itsScript = nullptr)
      : script(itsScript) {
    WNDCLASSA look{};
    look.lpfnWndProc = ::DefWindowProcA;
    look.lpszClassName = className;
    ::RegisterClassA(&look);
    window = ::CreateWindowA(className, "", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
  }
  FakeRenderer(const FakeRenderer&) = delete;
  FakeRenderer& operator=(const FakeRenderer&) = delete;
  ~FakeRenderer() { ::DestroyWindow(window); }

  // What it was told.
  HWND window = nullptr;
  long style = 0;
  HWND drain = nullptr;
  Rect place;
  int placed = 0;
  bool autoShow = true;

  STDMETHODIMP put_WindowStyle(LONG windowStyle) override {
    const HRESULT result = Answer("put_WindowStyle");
    if (SUCCEEDED(result)) style = windowStyle;
    return result;
  }
  STDMETHODIMP put_Owner(OAHWND owner) override {
    const HRESULT result = Answer("put_Owner");
    if (FAILED(result)) return result;
    ::SetWindowLongA(window, GWL_STYLE, owner != 0 ? WS_CHILD : WS_POPUP);
    ::SetParent(window, reinterpret_cast<HWND>(owner));
    ::ShowWindow(window, SW_SHOWNA);
    return result;
  }
  STDMETHODIMP put_MessageDrain(OAHWND to) override {
    const HRESULT result = Answer("put_MessageDrain");
    if (SUCCEEDED(result)) drain = reinterpret_cast<HWND>(to);
    return result;
  }
  STDMETHODIMP SetWindowPosition(LONG left, LONG top, LONG width, LONG height) override {
    const HRESULT result = Answer("SetWindowPosition");
    if (FAILED(result)) return result;
    place = {left, top, left + width, top + height};
    ++placed;
    ::MoveWindow(window, left, top, width, height, TRUE);
    return result;
  }

  STDMETHODIMP put_AutoShow(LONG show) override {
    const HRESULT result = Answer("put_AutoShow");
    if (SUCCEEDED(result)) autoShow = show != 0;
    return result;
  }
  STDMETHODIMP put_Visible(LONG) override { return Answer("put_Visible"); }

  // It lives as long as its test, which holds one reference.
  ULONG references = 1;
  STDMETHODIMP QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
  STDMETHODIMP_(ULONG) Release() override { return --references; }

  // Nobody asks for the rest.
  QUORVEX_UNEXPECTED_PROPERTY(Caption, BSTR)
  QUORVEX_UNEXPECTED(get_WindowStyle, LONG*)
  QUORVEX_UNEXPECTED_PROPERTY(WindowStyleEx, LONG)
  QUORVEX_UNEXPECTED(get_AutoShow, LONG*)
  QUORVEX_UNEXPECTED_PROPERTY(WindowState, LONG)
  QUORVEX_UNEXPECTED_PROPERTY(BackgroundPalette, LONG)
  QUORVEX_UNEXPECTED(get_Visible, LONG*)
  QUORVEX_UNEXPECTED_PROPERTY(Left, LONG)
  QUORVEX_UNEXPECTED_PROPERTY(Width, LONG)
  QUORVEX_UNEXPECTED_PROPERTY(Top, LONG)
  QUORVEX_UNEXPECTED_PROPERTY(Height, LONG)
  QUORVEX_UNEXPECTED(get_Owner, OAHWND*)
  QUORVEX_UNEXPECTED(get_MessageDrain, OAHWND*)
  QUORVEX_UNEXPECTED_PROPERTY(BorderColor, LONG)
  QUORVEX_UNEXPECTED_PROPERTY(FullScreenMode, LONG)
  QUORVEX_UNEXPECTED(SetWindowForeground, LONG)
  QUORVEX_UNEXPECTED(NotifyOwnerMessage, OAHWND, LONG, LONG_PTR, LONG_PTR)
  QUORVEX_UNEXPECTED(GetWindowPosition, LONG*, LONG*, LONG*, LONG*)
  QUORVEX_UNEXPECTED(GetMinIdealImageSize, LONG*, LONG*)
  QUORVEX_UNEXPECTED(GetMaxIdealImageSize, LONG*, LONG*)
  QUORVEX_UNEXPECTED(GetRestorePosition, LONG*, LONG*, LONG*, LONG*)
  QUORVEX_UNEXPECTED(HideCursor, LONG)
  QUORVEX_UNEXPECTED(IsCursorHidden, LONG*)

 private:
  [[nodiscard]] HRESULT Answer(const char* name) const {
    return script == nullptr ? S_OK : script->Answer(name);
  }

  ComScript* script;
};

}  // namespace quorvex
