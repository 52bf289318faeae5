// A modal dialog with a list to choose from.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

namespace quorvex {

// The module whose resources the dialogs are.
HINSTANCE DialogModule();

// The place of the choice made; none when the dialog was cancelled. `chosen` is selected at first.
std::optional<int> RunChoiceDialog(HWND owner, const wchar_t* title, const std::vector<std::wstring>& choices,
                                   int chosen);

}  // namespace quorvex
