// The ways in which media files come to be played.
#pragma once

#include <windows.h>

#include <shellapi.h>

#include <string>
#include <vector>

namespace quorvex {

// The message by which the panel reminds itself of files that another program handed over.
inline constexpr UINT kHandedOverMessage = WM_APP + 2;

// The Open Media File command: asks for files or an album, and plays them.
void OpenMediaFile();

// Files dropped on the panel: the first is played.
void OnDropFiles(HDROP drop);

// Files from another program, to be played as soon as no dialog or message box and no start sequence is in
// the way.
void HandOver(std::vector<std::string> paths);
bool HasHandedOver();
void PlayHandedOver();

}  // namespace quorvex
