#include "video/renderer_window.h"

#include <algorithm>
#include <vector>

#include "panel/main_window.h"
#include "video/picture_user.h"

namespace quorvex {
namespace {

constexpr char kRendererClass[] = "VideoRenderer";

WNDPROC rendererOriginalProc = nullptr;

// It runs on the thread that owns the renderer's window.
LRESULT CALLBACK RendererProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_NCHITTEST:
      if (!fullScreen && !CurrentPictureUser().IsMenuActive()) return HTCAPTION;
      break;
    case WM_NCLBUTTONDOWN:
      // The caption that is dragged is the frame's.
      if (wParam == HTCAPTION) {
        ::PostMessageA(::GetParent(window), message, wParam, lParam);
        return 0;
      }
      break;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      if (fullScreen && !CurrentPictureUser().IsMenuActive()) {
        ::ShowWindow(mainWindow, SW_RESTORE);
        RaiseControlPanel();
      }
      break;
    default: break;
  }
  return ::CallWindowProcA(rendererOriginalProc, window, message, wParam, lParam);
}

std::vector<HWND> ChildrenOf(HWND frame) {
  std::vector<HWND> children;
  for (HWND child = ::GetWindow(frame, GW_CHILD); child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT))
    children.push_back(child);
  return children;
}

bool IsOurs(HWND window) {
  return ::GetWindowLongPtrA(window, GWLP_WNDPROC) == reinterpret_cast<LONG_PTR>(&RendererProc);
}

// Windows names the renderer's class; where it has another (Wine), the renderer is the child that has just
// come, or the one that was taken over before.
HWND FindRenderer(HWND frame, const std::vector<HWND>& before) {
  if (const HWND named = ::FindWindowExA(frame, nullptr, kRendererClass, nullptr); named != nullptr)
    return named;
  const std::vector<HWND> now = ChildrenOf(frame);
  const auto isNew = [&](HWND child) {
    return std::find(before.begin(), before.end(), child) == before.end();
  };
  auto found = std::find_if(now.begin(), now.end(), isNew);
  if (found == now.end()) found = std::find_if(now.begin(), now.end(), IsOurs);
  return found == now.end() ? nullptr : *found;
}

}  // namespace

HWND AdoptRendererWindow(IVideoWindow* renderer, HWND frame) {
  const std::vector<HWND> before = ChildrenOf(frame);
  renderer->put_Owner(reinterpret_cast<OAHWND>(frame));
  const HWND window = FindRenderer(frame, before);
  if (window == nullptr) return nullptr;
  if (!IsOurs(window)) {
    rendererOriginalProc = reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&RendererProc)));
  }
  return window;
}

}  // namespace quorvex
