// What the user works on the disc: its menus, streams and captions.
#include <windows.h>

#include "devices/config_store.h"
#include "devices/dvd/dvd_device.h"
#include "panel/commands.h"
#include "panel/popup_menu.h"

namespace quorvex {

bool CDVDDevice::ShowMenu(int menuKind) {
  if (!IsGraphOpen()) return false;
  DVD_DOMAIN domain{};
  if (SUCCEEDED(navigator.info->GetCurrentDomain(&domain))) FollowDomain(domain);
  if (menuShown) {
    navigator.control->Resume();
    menuShown = false;
  }
  const HRESULT result = navigator.control->MenuCall(static_cast<DVD_MENU_ID>(menuKind));
  if (SUCCEEDED(result)) menuShown = true;
  return menuShown;
}

bool CDVDDevice::SelectButton(HRESULT (STDMETHODCALLTYPE IDvdControl::*select)()) {
  return menuShown && navigator.control && SUCCEEDED((navigator.control.Get()->*select)());
}

bool CDVDDevice::Up() { return SelectButton(&IDvdControl::UpperButtonSelect); }
bool CDVDDevice::Down() { return SelectButton(&IDvdControl::LowerButtonSelect); }
bool CDVDDevice::Increase() { return SelectButton(&IDvdControl::RightButtonSelect); }
bool CDVDDevice::Decrease() { return SelectButton(&IDvdControl::LeftButtonSelect); }
bool CDVDDevice::ConfirmEntry() { return SelectButton(&IDvdControl::ButtonActivate); }

bool CDVDDevice::MenuClick(int x, int y) {
  return navigator.control && SUCCEEDED(navigator.control->MouseActivate({x, y}));
}

bool CDVDDevice::MenuPoint(int x, int y) {
  return navigator.control && SUCCEEDED(navigator.control->MouseSelect({x, y}));
}

// While the menu is open its loop dispatches commands, which may end this object: nothing of it is touched
// then.
bool CDVDDevice::ShowStreamMenu() {
  const UniqueMenu menu = streams.BuildMenu();
  if (!menu) return false;
  ShowAtButton(menu.Get(), kCommandStreamMenu);
  return true;
}

bool CDVDDevice::ToggleClosedCaption() {
  if (!IsGraphOpen() || !captionDecoder) return false;
  captionsOn = !captionsOn;
  ApplyCaptions();
  return true;
}

bool CDVDDevice::LoadSettings() {
  captionOpaque = ReadConfig().Integer("DVD", "CCOpaque", 0) != 0;
  ApplyCaptions();
  return true;
}

void CDVDDevice::ApplyCaptions() {
  if (!IsGraphOpen()) return;
  ApplyCaptionState();
  if (captionsOn) ApplyCaptionBackground();
}

}  // namespace quorvex
