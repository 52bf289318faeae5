// A video renderer as far as its window goes: it follows its owner, its place and its drain, and writes down
// what it was told.
#pragma once

#include <windows.h>

#include <strmif.h>

#include <control.h>

#include "base/geometry.h"

namespace quorvex {

class FakeRenderer final : public IVideoWindow {
 public:
  // `className`: what the window's class is called.
  explicit FakeRenderer(const char* className = "SomeRenderer") {
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

  STDMETHODIMP put_WindowStyle(LONG windowStyle) override {
    style = windowStyle;
    return S_OK;
  }
  STDMETHODIMP put_Owner(OAHWND owner) override {
    ::SetWindowLongA(window, GWL_STYLE, owner != 0 ? WS_CHILD : WS_POPUP);
    ::SetParent(window, reinterpret_cast<HWND>(owner));
    ::ShowWindow(window, SW_SHOWNA);
    return S_OK;
  }
  STDMETHODIMP put_MessageDrain(OAHWND to) override {
    drain = reinterpret_cast<HWND>(to);
    return S_OK;
  }
  STDMETHODIMP SetWindowPosition(LONG left, LONG top, LONG width, LONG height) override {
    place = {left, top, left + width, top + height};
    ++placed;
    ::MoveWindow(window, left, top, width, height, TRUE);
    return S_OK;
  }

  // It lives as long as its test.
  STDMETHODIMP QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
  STDMETHODIMP_(ULONG) AddRef() override { return 2; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }

  // Nobody asks for the rest.
  STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
    return E_NOTIMPL;
  }
  STDMETHODIMP put_Caption(BSTR) override { return E_NOTIMPL; }
  STDMETHODIMP get_Caption(BSTR*) override { return E_NOTIMPL; }
  STDMETHODIMP get_WindowStyle(LONG*) override { return E_NOTIMPL; }
  STDMETHODIMP put_WindowStyleEx(LONG) override { return E_NOTIMPL; }
  STDMETHODIMP get_WindowStyleEx(LONG*) override { return E_NOTIMPL; }
  STDMETHODIMP put_AutoShow(LONG) override { return E_NOTIMPL; }
  STDMETHODIMP get_AutoShow(LONG*) override { return E_NOTIMPL; }
  STDMETHODIMP put_WindowState(LONG) override { return E_NOTIMPL; }
  STDMETHODIMP get_WindowState(LONG*) override { return E_NOTIMPL; }
  STDMETHODIMP put_BackgroundPalette(LONG) override { return E_NOTIMPL; }
  STDMETHODIMP get_BackgroundPalette(LONG*) override { return E_NOTIMPL; }
  STDMETHODIMP put_Visible(LONG) override { return E_NOTIMPL; }
  STDMETHODIMP get_Visible(LONG*) override { return E_NOTIMPL; }
  STDMETHODIMP put_Left(LONG) override { return E_NOTIMPL; }
  STDMETHODIMP get_Left(LONG*) override { return E_NOTIMPL; }
  STDMETHODIMP put_Width(LONG) override { return E_NOTIMPL; }
  STDMETHODIMP get_Width(LONG*) override { return E_NOTIMPL; }
  STDMETHODIMP put_Top(LONG) override { return E_NOTIMPL; }
  STDMETHODIMP get_Top(LONG*) override { return E_NOTIMPL; }
  STDMETHODIMP put_Height(LONG) override { return E_NOTIMPL; }
  STDMETHODIMP get_Height(LONG*) override { return E_NOTIMPL; }
  STDMETHODIMP get_Owner(OAHWND*) override { return E_NOTIMPL; }
  STDMETHODIMP get_MessageDrain(OAHWND*) override { return E_NOTIMPL; }
  STDMETHODIMP get_BorderColor(LONG*) override { return E_NOTIMPL; }
  STDMETHODIMP put_BorderColor(LONG) override { return E_NOTIMPL; }
  STDMETHODIMP get_FullScreenMode(LONG*) override { return E_NOTIMPL; }
  STDMETHODIMP put_FullScreenMode(LONG) override { return E_NOTIMPL; }
  STDMETHODIMP SetWindowForeground(LONG) override { return E_NOTIMPL; }
  STDMETHODIMP NotifyOwnerMessage(OAHWND, LONG, LONG_PTR, LONG_PTR) override { return E_NOTIMPL; }
  STDMETHODIMP GetWindowPosition(LONG*, LONG*, LONG*, LONG*) override { return E_NOTIMPL; }
  STDMETHODIMP GetMinIdealImageSize(LONG*, LONG*) override { return E_NOTIMPL; }
  STDMETHODIMP GetMaxIdealImageSize(LONG*, LONG*) override { return E_NOTIMPL; }
  STDMETHODIMP GetRestorePosition(LONG*, LONG*, LONG*, LONG*) override { return E_NOTIMPL; }
  STDMETHODIMP HideCursor(LONG) override { return E_NOTIMPL; }
  STDMETHODIMP IsCursorHidden(LONG*) override { return E_NOTIMPL; }
};

}  // namespace quorvex
