// A modal dialog with the card's picture controls.
#pragma once

#include <windows.h>

#include "platform/tv/picture_source.h"

namespace quorvex {

// What is moved takes effect at once; Cancel puts it back.
void RunDisplayDialog(HWND owner, PictureSource& source);

}  // namespace quorvex
