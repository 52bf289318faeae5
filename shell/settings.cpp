#include "shell/settings.h"

#include "devices/config_store.h"
#include "devices/shared_state.h"
#include "panel/shown_colours.h"

namespace quorvex {

ShellSettings settings;

namespace {

constexpr char kSection[] = "QUORVEX";

bool ScreenSaverActive() {
  BOOL active = FALSE;
  ::SystemParametersInfoA(SPI_GETSCREENSAVEACTIVE, 0, &active, 0);
  return active != FALSE;
}

void SetScreenSaver(bool active) {
  ::SystemParametersInfoA(SPI_SETSCREENSAVEACTIVE, active ? TRUE : FALSE, nullptr, 0);
}

DeviceType StartableType(int value) {
  return value >= 0 && value <= static_cast<int>(DeviceType::kCd) ? static_cast<DeviceType>(value)
                                                                  : DeviceType::kNone;
}

}  // namespace

std::string StorePath(std::string folder, const char* name) {
  if (!folder.ends_with('\\')) folder += '\\';
  return folder + name;
}

void BuildPaths() {
  char folder[MAX_PATH] = "";
  ::GetWindowsDirectoryA(folder, MAX_PATH);
  configPath = StorePath(folder, "quorvex.ini");
  mediaAlbumPath = StorePath(folder, "mfiles.abm");
  cdAlbumPath = StorePath(folder, "cd.abm");
}

int WantedScale() { return ReadConfig().Integer(kSection, "Scale", 0); }

void LoadSettings() {
  const IniSnapshot config = ReadConfig();
  settings.unreadable = config.state == IniSnapshot::State::kUnreadable;
  settings.autoStartDevice = config.Integer(kSection, "AutoStartDevice", 1);
  if (settings.autoStartDevice != 0) {
    currentDeviceType = StartableType(config.Integer(kSection, "LastDevice", 0));
    startCaptureDevice = config.Integer("TV", "LastCapDevice", 0);
  }
  settings.screenSaverWasActive = ScreenSaverActive();
  settings.disableApm = config.Integer(kSection, "DisableAPM", 0) != 0;
  settings.disableScreenSaver = config.Integer(kSection, "DisableScreenSaver", 0) != 0;
  if (settings.disableScreenSaver) SetScreenSaver(false);
}

void SaveSettings() {
  UpdateConfig([](IniDocument& document) {
    const auto flag = [](bool set) { return set ? "1" : "0"; };
    document.Set(kSection, "AutoStartDevice", std::to_string(settings.autoStartDevice));
    document.Set(kSection, "LastDevice", std::to_string(static_cast<int>(currentDeviceType)));
    document.Set("TV", "LastCapDevice", std::to_string(currentCaptureDevice));
    document.Set(kSection, "DisableAPM", flag(settings.disableApm));
    document.Set(kSection, "DisableScreenSaver", flag(settings.disableScreenSaver));
  });
  if (settings.screenSaverWasActive) SetScreenSaver(true);
}

void ApplyScreenSaverSetting() {
  if (settings.disableScreenSaver) {
    SetScreenSaver(false);
  } else if (settings.screenSaverWasActive) {
    SetScreenSaver(true);
  }
}

void OnSettingChange(WPARAM setting) {
  if (setting == SPI_SETSCREENSAVEACTIVE) settings.screenSaverWasActive = ScreenSaverActive();
  if (setting == SPI_SETHIGHCONTRAST) ShowHighContrast(ReadHighContrast());
}

LRESULT OnPowerBroadcast(WPARAM event) {
  return event == PBT_APMQUERYSUSPEND && settings.disableApm ? BROADCAST_QUERY_DENY : TRUE;
}

}  // namespace quorvex
