// Tells the user what an MCI driver answered.
#pragma once

#include <windows.h>

#include <mmsystem.h>

namespace quorvex {

// The control panel calls ShowMciError when this message reaches it.
inline constexpr UINT kMciErrorMessage = WM_APP + 1;

// Answers whether a command succeeded (code 0). Otherwise has the driver's text for the code shown as soon as
// the message loop runs: the box has no owner, so the user may close the device while it is open, and no
// device's operation may then still be under way. Errors that come while one waits or is shown are left out.
bool ReportMciError(MCIERROR code);

// Shows the error that waits, in a modal box.
void ShowMciError();

}  // namespace quorvex
