// What every room may ask of the control-panel window without knowing who answers its messages.
#pragma once

#include <windows.h>

#include <string>

namespace quorvex {

// The module that holds the resources; set by the entry point.
extern HINSTANCE instance;

// The control panel (window class PControl): owner of every timer and message box; null before it is made.
extern HWND mainWindow;

// The extra bytes of a window class whose procedure falls back to that of dialogs. A 64-bit Windows may use
// more of them than DLGWINDOWEXTRA (30) says.
inline constexpr int kDialogClassExtra = DLGWINDOWEXTRA + 18;

// A string resource; empty when there is none of that number.
std::string LoadText(int stringId);

// A modal message box owned by the control panel, or by the dialog that is open, caption "Quorvex", stop
// icon, topmost. Answers the box's result.
int ReportError(const std::string& text);

// Reports `text` when `failed` is not zero (a platform's result code may be passed whole: S_FALSE counts as
// failed). Answers whether it did.
bool ReportErrorIf(long failed, const std::string& text);

// Puts the control panel in front of everything, or back among the other windows.
void RaiseControlPanel();
void LowerControlPanel();

// SWP_NOACTIVATE while a dialog waits for keys, which a window that moves is not to take away; else 0.
UINT Quietly();

// Who must wait until a box or dialog is answered: the panel, so that no device goes under its own operation;
// what runs in a dialog, which holds up the panel already, is not to be begun again under its own box.
HWND OwnerOfBox();

// Shows one of the system's pointers (IDC_...) until the mouse moves.
void SetPointer(LPCSTR cursor);

// Moves `window` so that its centre lies over the centre of `reference`, or of where that comes back to when
// it is minimised; size and z-order stay.
void CenterWindow(HWND window, HWND reference);

// Moves a window that hangs over the edge of its screen's work area just so far that it does not.
void BringIntoView(HWND window);

}  // namespace quorvex
