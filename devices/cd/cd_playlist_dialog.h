// The "CD Playlist" dialog: the user names the disc and its tracks, and makes its play list from them.
#pragma once

#include <windows.h>

namespace quorvex {

// Shows the editor of the current device's disc until it is closed; the current device is to be the CD
// device. Answers 1 after OK (what was entered is in the store), 0 after Cancel.
INT_PTR ShowCdPlaylistDialog(HWND owner);

}  // namespace quorvex
