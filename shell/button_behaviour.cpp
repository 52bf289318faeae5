#include "shell/button_behaviour.h"

#include <windows.h>
#include <windowsx.h>

#include <commctrl.h>

#include "devices/current_device.h"
#include "devices/shared_state.h"
#include "panel/control_panel.h"
#include "panel/main_window.h"
#include "shell/chapters_menu.h"
#include "shell/command_table.h"

namespace quorvex {
namespace {

constexpr UINT_PTR kDelayTimer = 200;
constexpr UINT_PTR kRepeatTimer = 201;
constexpr UINT kDelayMs = 500;
constexpr UINT kScanPeriodMs = 50;
constexpr UINT kArrowPeriodMs = 100;

// One pointer holds one button down, so the repeating buttons share this.
struct Press {
  bool pressed = false;
  bool left = false;  // the pointer is outside the pressed button
};
Press press;

bool IsScanKey(int command) { return command == kCommandFastForward || command == kCommandRewind; }

// On a DVD, Fast Forward and Rewind act once, when the key is let go.
bool ActsOnRelease(int command) {
  return IsScanKey(command) && currentDevice && currentDevice->kind == DeviceType::kDvd;
}

void Scan(int command) {
  if (command == kCommandFastForward) {
    currentDevice->FastForward();
  } else {
    currentDevice->Rewind();
  }
}

void Repeat(int command) {
  if (!IsScanKey(command)) {
    RunCommand(command);
  } else if (currentDevice &&
             (currentDeviceType == DeviceType::kDvd || currentDeviceType == DeviceType::kCd ||
              currentDeviceType == DeviceType::kFile)) {
    Scan(command);
  }
}

void Release(int command) {
  if (!IsScanKey(command) || !currentDevice) return;
  if (currentDevice->kind == DeviceType::kDvd) {
    Scan(command);
  } else {
    currentDevice->EndScan();
  }
}

void EndPress(HWND button) {
  press = {};
  ::KillTimer(button, kDelayTimer);
  ::KillTimer(button, kRepeatTimer);
}

// The press ends without a release: a menu, a message box or another window took the mouse.
void CancelPress(HWND button, int command) {
  if (!press.pressed) return;
  EndPress(button);
  Release(command);
}

void BeginPress(HWND button, int command) {
  if (ActsOnRelease(command)) return;
  press = {true, false};
  ::SetTimer(button, kDelayTimer, kDelayMs, nullptr);
}

void FinishPress(HWND button, int command) {
  EndPress(button);
  Release(command);
}

void FollowPointer(HWND button, LPARAM position) {
  if (!press.pressed) return;
  RECT client{};
  ::GetClientRect(button, &client);
  press.left = ::PtInRect(&client, {GET_X_LPARAM(position), GET_Y_LPARAM(position)}) == FALSE;
}

void OnRepeatTimer(HWND button, int command, UINT_PTR timer) {
  if (timer == kDelayTimer) {
    ::KillTimer(button, kDelayTimer);
    ::SetTimer(button, kRepeatTimer, IsScanKey(command) ? kScanPeriodMs : kArrowPeriodMs, nullptr);
  }
  if (!press.left) Repeat(command);
}

LRESULT CALLBACK RepeatProcedure(HWND button, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR command,
                                 DWORD_PTR) {
  const int id = static_cast<int>(command);
  switch (message) {
    case WM_LBUTTONDBLCLK:
      message = WM_LBUTTONDOWN;  // an owner-drawn button would not take the mouse, and miss the release
      [[fallthrough]];
    case WM_LBUTTONDOWN: BeginPress(button, id); break;
    case WM_KEYDOWN:
      if (wParam != VK_SPACE) break;
      // Held down it comes again and again; the button would take the mouse anew each time.
      if ((HIWORD(lParam) & KF_REPEAT) != 0) return 0;
      BeginPress(button, id);
      break;
    case WM_KEYUP:
      // The button is not pushed when the panel took the key's press for itself.
      if (wParam == VK_SPACE && (Button_GetState(button) & BST_PUSHED) != 0) FinishPress(button, id);
      break;
    case WM_TIMER:
      if (wParam == kDelayTimer || wParam == kRepeatTimer) OnRepeatTimer(button, id, wParam);
      break;
    case WM_MOUSEMOVE:
      if ((wParam & MK_LBUTTON) != 0) FollowPointer(button, lParam);  // not when the space bar holds it
      break;
    case WM_LBUTTONUP: FinishPress(button, id); break;
    case WM_CANCELMODE:
    case WM_CAPTURECHANGED: CancelPress(button, id); break;
    default: break;
  }
  return ::DefSubclassProc(button, message, wParam, lParam);
}

LRESULT CALLBACK ChapterProcedure(HWND button, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR command,
                                  DWORD_PTR) {
  // The keyboard asks for a menu without a place.
  if (message == WM_RBUTTONUP || (message == WM_CONTEXTMENU && lParam == -1))
    ShowChaptersMenu(static_cast<int>(command));
  return ::DefSubclassProc(button, message, wParam, lParam);
}

void Subclass(int command, SUBCLASSPROC procedure) {
  ::SetWindowSubclass(ButtonWindow(ButtonIndex(command)), procedure, static_cast<UINT_PTR>(command), 0);
}

}  // namespace

void InstallButtonBehaviours() {
  for (const int command :
       {kCommandRight, kCommandLeft, kCommandUp, kCommandDown, kCommandFastForward, kCommandRewind}) {
    Subclass(command, RepeatProcedure);
  }
  for (const int command : {kCommandNext, kCommandPrevious}) Subclass(command, ChapterProcedure);
}

}  // namespace quorvex
