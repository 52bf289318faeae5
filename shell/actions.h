// What the shell itself does on a command; what a device does is the device's.
#pragma once

namespace quorvex {

// The current device plays or resumes at a rate (1.0 normal, 0.5 slow).
void PlayAtRate(double rate);

// The arrow keys, from a click, the keyboard or a held button.
void PressUp();
void PressDown();
void PressRight();
void PressLeft();

// The Mute key.
void PressMute();

// The Setup key: the sheet of all options.
void Setup();

void ToggleFullScreen();
void HidePlayer();

// The panel closes: at once or, while a dialog is open, after that, for what has opened the dialog goes on
// then.
void Power();
// A dialog has been closed: the panel takes keys again.
void OnPanelEnabled();

// The session ends, and this process with it, perhaps as soon as this returns: what is to last is stored, and
// a recording ended. Dialogs that are open stay, and so does the device that has opened them.
void OnSessionEnd();

}  // namespace quorvex
