#include "panel/popup_menu.h"

#include "panel/control_panel.h"
#include "panel/main_window.h"

namespace quorvex {

void ShowAtButton(HMENU menu, int command) {
  RECT button{};
  ::GetWindowRect(ButtonWindow(ButtonIndex(command)), &button);
  ::TrackPopupMenu(menu, TPM_LEFTALIGN | TPM_LEFTBUTTON, button.left, button.top, 0, mainWindow, nullptr);
}

}  // namespace quorvex
