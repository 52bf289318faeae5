#include "video/video_window.h"

#include <windowsx.h>

#include "panel/main_window.h"
#include "panel/skin.h"
#include "panel/window_place.h"
#include "resources/ids.h"
#include "video/renderer_window.h"

namespace quorvex {

std::unique_ptr<CVWindow> theVideoWindow;

namespace {

constexpr char kFrameClass[] = "PVideo";
constexpr LONG kRendererStyle = WS_CHILD | WS_CLIPSIBLINGS | WS_CLIPCHILDREN;

RECT WindowRect(HWND window) {
  RECT rect{};
  ::GetWindowRect(window, &rect);
  return rect;
}

Rect ToRect(const RECT& rect) { return {rect.left, rect.top, rect.right, rect.bottom}; }

Size ScreenSize() { return {::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN)}; }

void PaintSkin(HDC dc, Size frame) {
  const Rect picture = PictureInFrame(frame);
  const Margins margins = FrameMargins();
  StretchBitmapResource(dc, IDB_FRAME_LEFT, 0, 0, picture.left, frame.height);
  StretchBitmapResource(dc, IDB_FRAME_TOP, 0, 0, frame.width, picture.top);
  StretchBitmapResource(dc, IDB_FRAME_RIGHT, picture.right, 0, margins.right, frame.height);
  StretchBitmapResource(dc, IDB_FRAME_BOTTOM, 0, picture.bottom, frame.width, margins.bottom);
  DrawBitmapResource(dc, IDB_FRAME_TOP_LEFT, 0, 0);
  DrawBitmapResource(dc, IDB_FRAME_TOP_RIGHT, picture.right, 0);
  DrawBitmapResource(dc, IDB_FRAME_BOTTOM_LEFT, 0, picture.bottom);
  DrawBitmapResource(dc, IDB_FRAME_BOTTOM_RIGHT, picture.right, picture.bottom);
}

void OnPaint(HWND frame) {
  PAINTSTRUCT paint{};
  const HDC dc = ::BeginPaint(frame, &paint);
  RECT client{};
  ::GetClientRect(frame, &client);
  if (fullScreen) {
    ::FillRect(dc, &client, static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH)));
  } else {
    PaintSkin(dc, ToRect(client).Extent());
  }
  ::EndPaint(frame, &paint);
  ::DefDlgProcA(frame, WM_PAINT, 0, 0);
}

LRESULT CALLBACK FrameProcedure(HWND frame, UINT message, WPARAM wParam, LPARAM lParam) {
  const int x = GET_X_LPARAM(lParam);
  const int y = GET_Y_LPARAM(lParam);
  switch (message) {
    case WM_DESTROY: return 0;
    case WM_SIZE:
      if (theVideoWindow) theVideoWindow->LayoutVideo(x, y);
      return 0;
    case WM_PAINT: OnPaint(frame); return 0;
    case WM_CLOSE: DeleteVideoWindow(); return 0;
    case WM_DISPLAYCHANGE:
      if (fullScreen && theVideoWindow) theVideoWindow->FillScreen(SWP_NOZORDER | SWP_NOACTIVATE);
      break;
    case WM_NCHITTEST:
      if (theVideoWindow) return theVideoWindow->HitTest(x, y);
      break;
    case WM_MOUSEMOVE: CurrentPictureUser().MenuPoint(x, y); break;
    case WM_LBUTTONDOWN: CurrentPictureUser().MenuClick(x, y); break;
    case WM_SIZING:
      if (!theVideoWindow) break;
      theVideoWindow->ConstrainSizing(static_cast<int>(wParam), *reinterpret_cast<RECT*>(lParam));
      return 1;
    default: break;
  }
  return ::DefDlgProcA(frame, message, wParam, lParam);
}

}  // namespace

bool RegisterVideoClass() {
  WNDCLASSA frame{};
  frame.lpfnWndProc = FrameProcedure;
  frame.cbWndExtra = kDialogClassExtra;
  frame.hInstance = instance;
  frame.hCursor = ::LoadCursorA(nullptr, IDC_ARROW);
  frame.lpszClassName = kFrameClass;
  return ::RegisterClassA(&frame) != 0;
}

void DeleteVideoWindow() {
  if (!theVideoWindow) return;
  if (fullScreen) LowerControlPanel();
  theVideoWindow->Destroy();
  theVideoWindow.reset();
}

CVWindow::CVWindow() {
  CurrentPictureUser().ResetOsd();
  frameWindow = ::CreateWindowExA(0, kFrameClass, "QUORVEX Video", WS_POPUP | WS_CLIPCHILDREN, 0, 0, 1, 1,
                                  nullptr, nullptr, instance, nullptr);
}

HWND CVWindow::Attach(IVideoWindow* renderer, int width, int height) {
  if (frameWindow == nullptr) return nullptr;
  videoWindow = renderer;
  videoSize = {width, height};
  const Size frame = FrameSize(FirstPicture(videoSize, ScreenSize()));
  const Point place = PlaceFrame(ToRect(PlaceOf(mainWindow)), frame);
  if (fullScreen) {
    restoreRect = {place.x, place.y, place.x + frame.width, place.y + frame.height};
    if (::IsWindowVisible(frameWindow) == FALSE) FillScreen();
    FitFullScreen(ScreenSize());
  } else {
    // The next file's picture takes the keyboard from nobody.
    const UINT quietly = ::IsWindowVisible(frameWindow) != FALSE ? SWP_NOACTIVATE : Quietly();
    ::SetWindowPos(frameWindow, nullptr, place.x, place.y, frame.width, frame.height,
                   SWP_NOZORDER | SWP_NOCOPYBITS | quietly);
    if (ToRect(WindowRect(frameWindow)).Extent() == frame) SetVideoRect(PictureInFrame(frame));
  }
  hitZones = BuildHitZones(frame);
  TakeOver(renderer);
  if (::IsWindowVisible(frameWindow) == FALSE) {
    ::ShowWindow(frameWindow, Quietly() != 0 ? SW_SHOWNA : SW_SHOW);
    ::UpdateWindow(frameWindow);
    if (fullScreen) RaiseControlPanel();  // which the frame has come in front of
  }
  return frameWindow;
}

HWND CVWindow::Reattach(IVideoWindow* renderer) {
  videoWindow = renderer;
  const Size frame = ToRect(WindowRect(frameWindow)).Extent();
  if (fullScreen) {
    FitFullScreen(frame);
  } else {
    SetVideoRect(PictureInFrame(frame));
  }
  TakeOver(renderer);
  return frameWindow;
}

void CVWindow::TakeOver(IVideoWindow* renderer) {
  rendererWindow = AdoptRendererWindow(renderer, frameWindow);
  renderer->put_WindowStyle(kRendererStyle);
  renderer->put_MessageDrain(reinterpret_cast<OAHWND>(frameWindow));
}

void CVWindow::Detach() {
  CurrentPictureUser().HideOsd();
  videoWindow = nullptr;
  rendererWindow = nullptr;
}

void CVWindow::FitFullScreen(Size area) {
  SetVideoRect(LetterBox(videoSize, area));
  RaiseControlPanel();
}

void CVWindow::Destroy() {
  CurrentPictureUser().HideOsd();
  ::DestroyWindow(frameWindow);
  frameWindow = nullptr;
}

bool CVWindow::ToggleFullScreen() { return fullScreen ? LeaveFullScreen() : EnterFullScreen(); }

bool CVWindow::EnterFullScreen() {
  fullScreen = true;  // before anything moves: the picture is laid out when the size changes
  restoreRect = WindowRect(frameWindow);
  FillScreen();
  return fullScreen;
}

void CVWindow::FillScreen(UINT flags) const {
  const Size screen = ScreenSize();
  ::SetWindowPos(frameWindow, HWND_TOPMOST, 0, 0, screen.width, screen.height,
                 SWP_NOCOPYBITS | Quietly() | flags);
}

// Under Wine without a window manager a window does not sink by itself: the frame must rise above it first.
void CVWindow::CoverPanel() const {
  ::SetWindowPos(frameWindow, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  LowerControlPanel();
}

bool CVWindow::LeaveFullScreen() {
  if (!fullScreen) return false;
  fullScreen = false;
  const Rect restored = ToRect(restoreRect);
  ::SetWindowPos(frameWindow, HWND_NOTOPMOST, restored.left, restored.top, restored.Width(),
                 restored.Height(), SWP_NOCOPYBITS);
  LowerControlPanel();
  return fullScreen;
}

void CVWindow::LayoutVideo(int width, int height) {
  const Size frame{width, height};
  if (fullScreen) {
    SetVideoRect(LetterBox(videoSize, frame));
    return;
  }
  hitZones = BuildHitZones(frame);
  SetVideoRect(PictureInFrame(frame));
}

void CVWindow::SetVideoRect(const Rect& rect) {
  videoRect = rect;
  if (videoWindow == nullptr) return;
  videoWindow->SetWindowPosition(rect.left, rect.top, rect.Width(), rect.Height());
  CurrentPictureUser().LayoutOsd();
}

void CVWindow::ConstrainSizing(int edge, RECT& rect) const {
  const Rect constrained = quorvex::ConstrainSizing(edge, ToRect(rect), videoSize);
  rect = {constrained.left, constrained.top, constrained.right, constrained.bottom};
  ::InvalidateRect(frameWindow, nullptr, FALSE);
}

int CVWindow::HitTest(int x, int y) const {
  if (fullScreen) return HTNOWHERE;
  POINT point{x, y};
  ::ScreenToClient(frameWindow, &point);
  return CodeAt(hitZones, {point.x, point.y});
}

}  // namespace quorvex
