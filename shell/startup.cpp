#include "shell/startup.h"

#include <commctrl.h>
#include <strmif.h>
#include <uuids.h>

#include "base/com_ptr.h"
#include "base/geometry.h"
#include "devices/current_device.h"
#include "devices/shared_state.h"
#include "panel/answer_watch.h"
#include "panel/control_panel.h"
#include "panel/main_window.h"
#include "panel/panel_accessibility.h"
#include "panel/scale.h"
#include "panel/shown_colours.h"
#include "panel/skin.h"
#include "panel/status_display.h"
#include "resources/ids.h"
#include "shell/button_behaviour.h"
#include "shell/control_window.h"
#include "shell/key_focus.h"
#include "shell/lifecycle.h"
#include "shell/settings.h"
#include "video/on_screen_display.h"
#include "video/video_window.h"

namespace quorvex {
namespace {

constexpr int kDistanceFromBottom = 195;  // of the panel's top edge, in units
constexpr char kPanelClass[] = "PControl";

bool RegisterPanelClass() {
  WNDCLASSA panel{};
  panel.lpfnWndProc = ControlWindowProcedure;
  panel.cbWndExtra = kDialogClassExtra;
  panel.hInstance = instance;
  panel.hIcon = ::LoadIconA(instance, MAKEINTRESOURCEA(IDI_QUORVEX));
  panel.hCursor = ::LoadCursorA(nullptr, IDC_ARROW);
  panel.lpszClassName = kPanelClass;
  return ::RegisterClassA(&panel) != 0;
}

bool CreatePanel() {
  const Size size{ToPixels(kPanelWidth), ToPixels(kPanelHeight)};
  const int x = Half(::GetSystemMetrics(SM_CXSCREEN) - size.width);
  const int y = ::GetSystemMetrics(SM_CYSCREEN) - ToPixels(kDistanceFromBottom);
  mainWindow = ::CreateWindowExA(WS_EX_APPWINDOW | WS_EX_CONTROLPARENT | WS_EX_ACCEPTFILES, kPanelClass,
                                 "Quorvex", WS_POPUP | WS_SYSMENU, x, y, size.width, size.height, nullptr,
                                 nullptr, instance, nullptr);
  return mainWindow != nullptr;
}

HWND CreateToolTips() {
  return ::CreateWindowExA(0, TOOLTIPS_CLASSA, "", TTS_ALWAYSTIP, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT,
                           CW_USEDEFAULT, mainWindow, nullptr, instance, nullptr);
}

void TrimSystemMenu() {
  const HMENU menu = ::GetSystemMenu(mainWindow, FALSE);
  for (const UINT command : {SC_SIZE, SC_MAXIMIZE, SC_MINIMIZE}) ::DeleteMenu(menu, command, MF_BYCOMMAND);
}

void PrepareDisplay() {
  CreateDisplayFont();
  const HDC dc = ::GetDC(mainWindow);
  PrepareColours(dc);
  ::ReleaseDC(mainWindow, dc);
  SetAllDisplayElements(false);
}

// The skin shows every key at rest, as all are at first: the panel is painted once instead of 48 times.
void PaintWholePanel() {
  ::RedrawWindow(mainWindow, nullptr, nullptr, RDW_UPDATENOW | RDW_NOCHILDREN);
  ::RedrawWindow(mainWindow, nullptr, nullptr, RDW_VALIDATE | RDW_ALLCHILDREN);
}

// Whether the platform can play DVDs here.
bool ProbeDvd() {
  ComPtr<IDvdGraphBuilder> builder;
  if (FAILED(::CoCreateInstance(CLSID_DvdGraphBuilder, nullptr, CLSCTX_INPROC, IID_IDvdGraphBuilder,
                                builder.ReceiveVoid()))) {
    return false;
  }
  AM_DVD_RENDERSTATUS status{};
  return SUCCEEDED(builder->RenderDvdVideoVolume(nullptr, AM_DVD_HWDEC_PREFER, &status));
}

}  // namespace

bool StartUp(HINSTANCE module) {
  instance = module;
  // The current folder is one of the user's media, which may come from anywhere: no library is taken from it.
  ::SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_DEFAULT_DIRS);
  ::InitCommonControls();
  ::CoInitialize(nullptr);
  BuildPaths();
  SetScale(ScaleFor(WantedScale(), static_cast<int>(::GetDpiForSystem())));
  if (!RegisterPanelClass() || !RegisterVideoClass() || !RegisterOsdClass() || !CreatePanel()) return false;
  WatchAnswers(mainWindow);
  ConnectPicture();
  CreatePanelButtons(CreateToolTips());
  LoadSettings();
  TrimSystemMenu();
  PrepareDisplay();
  dvdAvailable = ProbeDvd();
  InstallButtonBehaviours();
  InstallButtonAccessibility();
  ::UpdateWindow(mainWindow);
  ::ShowWindow(mainWindow, SW_SHOWNORMAL);
  PaintWholePanel();
  StartSequence();
  return true;
}

int RunMessageLoop() {
  const HACCEL keys = ::LoadAcceleratorsA(instance, MAKEINTRESOURCEA(IDR_ACCELERATORS));
  MSG message{};
  // A loop of the platform's (Wine's, while a window is dragged) may have taken the message to quit for
  // itself.
  while (::IsWindow(mainWindow) != FALSE && ::GetMessageA(&message, nullptr, 0, 0) > 0) {
    if (::TranslateAcceleratorA(mainWindow, keys, &message) == 0 && !MoveKeyFocus(message))
      ::DispatchMessageA(&message);
  }
  ::CoUninitialize();
  return message.message == WM_QUIT ? static_cast<int>(message.wParam) : 0;
}

}  // namespace quorvex
