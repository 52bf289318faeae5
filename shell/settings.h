// The shell's own settings: where the stores lie, what quorvex.ini says of the start, the screen saver and
// power saving.
#pragma once

#include <windows.h>

#include <string>

namespace quorvex {

struct ShellSettings {
  int autoStartDevice = 1;
  bool disableApm = false;
  bool disableScreenSaver = false;
  bool screenSaverWasActive = false;  // as found at start, or as the user changed it since
  bool unreadable = false;  // quorvex.ini is there and cannot be read: the settings are the defaults
};
extern ShellSettings settings;

// A store's path in a folder that may or may not end in a backslash, as a drive's root does.
std::string StorePath(std::string folder, const char* name);

// Finds the three stores in the Windows directory.
void BuildPaths();

// The scale that the user has chosen: 1 or 2, anything else for the display's own (ScaleFor).
int WantedScale();

// Reads the settings and switches the screen saver off when they say so.
void LoadSettings();

// Writes the settings and the devices now open; switches the screen saver on again if it was.
void SaveSettings();

// Follows a changed disableScreenSaver.
void ApplyScreenSaverSetting();

// WM_SETTINGCHANGE: a screen saver switched on or off elsewhere is what is put back at the end; high contrast
// changes the colours.
void OnSettingChange(WPARAM setting);

// The reply to WM_POWERBROADCAST.
LRESULT OnPowerBroadcast(WPARAM event);

}  // namespace quorvex
