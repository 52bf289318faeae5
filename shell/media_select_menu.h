// The Media Select key's pop-up menu: which device plays.
#pragma once

namespace quorvex {

// Shows the menu at its key; a choice comes to the control panel as a command.
void ShowMediaSelectMenu();

}  // namespace quorvex
