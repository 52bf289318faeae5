// Check boxes and pairs of radio buttons whose state is a number in quorvex.ini.
#pragma once

#include <windows.h>

#include "base/ini_document.h"
#include "base/ini_file.h"

namespace quorvex {

// Checks the box when the stored number, or `missing` where there is none, is not 0.
void LoadCheckBox(const IniSnapshot& store, HWND page, const char* section, const char* key, int missing,
                  int id);

// Stores 1 when the box or radio button is checked, else 0.
void SaveCheckBox(IniDocument& store, HWND page, const char* section, const char* key, int id);

// Checks the button that the stored number counts from the first one; a number that counts none of the two
// checks none.
void LoadRadioPair(const IniSnapshot& store, HWND page, const char* section, const char* key, int missing,
                   int first, int last);

}  // namespace quorvex
