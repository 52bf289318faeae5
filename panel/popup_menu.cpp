#include "panel/popup_menu.h"

#include "panel/button_table.h"
#include "panel/main_window.h"
#include "panel/scale.h"
#include "panel/window_place.h"

namespace quorvex {

void ShowAtButton(HMENU menu, int command) {
  const RECT panel = PlaceOf(mainWindow);
  const Rect button = ToPixels(kButtons[ButtonIndex(command)].Rectangle());
  ::TrackPopupMenu(menu, TPM_LEFTALIGN | TPM_LEFTBUTTON, panel.left + button.left, panel.top + button.top, 0,
                   mainWindow, nullptr);
}

}  // namespace quorvex
