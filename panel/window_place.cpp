#include "panel/window_place.h"

namespace quorvex {

RECT PlaceOf(HWND window) {
  RECT place{};
  if (::IsIconic(window) == FALSE) {
    ::GetWindowRect(window, &place);
    return place;
  }
  WINDOWPLACEMENT placement{};
  placement.length = sizeof placement;
  ::GetWindowPlacement(window, &placement);
  place = placement.rcNormalPosition;
  // It is told as if the screen began where its work area does.
  MONITORINFO screen{};
  screen.cbSize = sizeof screen;
  ::GetMonitorInfoA(::MonitorFromRect(&place, MONITOR_DEFAULTTONEAREST), &screen);
  ::OffsetRect(&place, screen.rcWork.left - screen.rcMonitor.left, screen.rcWork.top - screen.rcMonitor.top);
  return place;
}

}  // namespace quorvex
