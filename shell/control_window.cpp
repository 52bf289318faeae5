#include "shell/control_window.h"

#include <mmsystem.h>
#include <shellapi.h>

#include <utility>

#include "base/handles.h"
#include "devices/cd/mci_error.h"
#include "devices/current_device.h"
#include "panel/control_panel.h"
#include "panel/main_window.h"
#include "panel/panel_accessibility.h"
#include "panel/skin.h"
#include "panel/status_display.h"
#include "shell/actions.h"
#include "shell/command_table.h"
#include "shell/lifecycle.h"
#include "shell/open_files.h"
#include "shell/remote_control.h"
#include "shell/settings.h"
#include "video/video_window.h"

namespace quorvex {
namespace {

void OnPaint(HWND window) {
  PAINTSTRUCT paint{};
  const HDC dc = ::BeginPaint(window, &paint);
  PaintStatusDisplay(dc, paint.rcPaint);
  ::EndPaint(window, &paint);
}

// Posted when a dialog ends that the panel was raised for: the panel is only then active again, and in front.
constexpr UINT kDialogGoneMessage = WM_APP + 4;

bool raisedForDialog = false;

bool IsBefore(HWND front, HWND behind) {
  HWND window = ::GetWindow(behind, GW_HWNDPREV);
  while (window != nullptr && window != front) window = ::GetWindow(window, GW_HWNDPREV);
  return window != nullptr;
}

// A dialog comes. Over a picture on the whole screen the panel is raised, and what it owns with it.
void OnDisabled(HWND window) {
  if (!fullScreen || !theVideoWindow || IsBefore(window, theVideoWindow->Frame())) return;
  raisedForDialog = true;
  RaiseControlPanel();
}

// One dialog may follow another; then the panel goes back after the last.
void OnDialogGone(HWND window) {
  if (::IsWindowEnabled(window) == FALSE) {
    raisedForDialog = true;
  } else if (fullScreen && theVideoWindow) {
    theVideoWindow->CoverPanel();
  }
}

// A dialog is over: what has waited for its end may come.
void OnEnabled(HWND window) {
  if (std::exchange(raisedForDialog, false)) ::PostMessageA(window, kDialogGoneMessage, 0, 0);
  OnPanelEnabled();
  if (HasHandedOver()) ::PostMessageA(window, kHandedOverMessage, 0, 0);
}

void OnEntryTimeout(HWND window) {
  ::KillTimer(window, kEntryTimer);
  if (currentDevice) currentDevice->EndNumberEntry();
}

void OnTimer(HWND window, UINT_PTR timer) {
  switch (timer) {
    case kDeviceTimer:
      if (currentDevice) currentDevice->OnTick();
      break;
    case kLampTestTimer: BeginLampTest(); break;
    case kVersionTimer: EndLampTest(); break;
    case kEntryTimer: OnEntryTimeout(window); break;
    case kOsdTimer:
      if (currentDevice) currentDevice->OnOsdTimer();
      break;
    case kRecordTimer:
      if (currentDevice) currentDevice->OnRecordTick();
      break;
    case kClockTimer: TickClock(); break;
    default: break;
  }
}

}  // namespace

LRESULT CALLBACK ControlWindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_CREATE: return LoadSkinBitmaps() ? 0 : -1;
    case WM_DESTROY: ShutDown(); return 0;
    case WM_PAINT: OnPaint(window); return 0;
    case WM_CLOSE: Power(); return 0;
    case WM_ENDSESSION:
      if (wParam != FALSE) OnSessionEnd();
      return 0;
    case WM_ENABLE: wParam != FALSE ? OnEnabled(window) : OnDisabled(window); break;
    case WM_ERASEBKGND: PaintPanelBackground(reinterpret_cast<HDC>(wParam)); return 1;
    case WM_DISPLAYCHANGE:
      if (::IsIconic(window) == FALSE) BringIntoView(window);
      break;
    case WM_SETTINGCHANGE: OnSettingChange(wParam); return 0;
    case WM_DRAWITEM: DrawPanelButton(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam)); return 0;
    case WM_NCHITTEST: return HTCAPTION;  // the whole panel drags like a title bar
    case WM_COMMAND:
      // One that was posted before a dialog came would take the device away that has opened it.
      if (::IsWindowEnabled(window) != FALSE) RunCommand(LOWORD(wParam));
      return 0;
    case WM_TIMER: OnTimer(window, wParam); break;
    case WM_POWERBROADCAST: return OnPowerBroadcast(wParam);
    case WM_DROPFILES: OnDropFiles(reinterpret_cast<HDROP>(wParam)); return 0;
    case WM_COPYDATA:
      return OnCopyData(reinterpret_cast<HWND>(wParam), *reinterpret_cast<const COPYDATASTRUCT*>(lParam));
    case kRemoteKeyMessage: OnRemoteKey(static_cast<int>(wParam)); return 0;
    case kHandedOverMessage: OnHandedOver(); return 0;
    case kDialogGoneMessage: OnDialogGone(window); return 0;
    case MM_MCINOTIFY:
      if (currentDevice) currentDevice->OnMciNotify(static_cast<std::uint32_t>(wParam));
      return 0;
    case kGraphMessage:
      if (currentDevice) currentDevice->OnGraphEvent();
      return 0;
    case kMciErrorMessage: ShowMciError(); return 0;
    case WM_GETOBJECT:
      if (const LRESULT object = PanelObject(wParam, lParam); object != 0) return object;
      break;
    default: break;
  }
  return ::DefDlgProcA(window, message, wParam, lParam);
}

}  // namespace quorvex
