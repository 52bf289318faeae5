// What the navigator and its graph report, on the display.
#include <windows.h>

#include <dvdevcod.h>
#include <evcode.h>

#include "devices/dvd/dvd_device.h"
#include "panel/status_display.h"

namespace quorvex {

void CDVDDevice::OnGraphEvent() {
  GraphEvent event;
  while (TakeEvent(event)) OnEvent(event);
}

void CDVDDevice::OnEvent(const GraphEvent& event) {
  const auto value = static_cast<std::uint32_t>(event.first);
  switch (event.code) {
    case EC_COMPLETE:
      SetDisplayText("EC_COMPLETE");
      Stop();
      break;
    case EC_USERABORT: SetDisplayText("EC_USERABORT"); break;
    case EC_ERRORABORT: SetDisplayText("EC_ERRORABORT"); break;
    case EC_FULLSCREEN_LOST: SetDisplayText("EC_FULLSCREEN_LOST"); break;
    case EC_DVD_DOMAIN_CHANGE:
      if (FollowDomain(static_cast<DVD_DOMAIN>(value))) {
        UpdateStateLamps();
        UpdateButtonStates();
      }
      break;
    case EC_DVD_TITLE_CHANGE: OnTitleChange(value); break;
    case EC_DVD_CHAPTER_START: OnChapterStart(static_cast<int>(value)); break;
    case EC_DVD_CURRENT_TIME: ShowDisplayTime(value); break;
    case EC_DVD_DISC_EJECTED: OnDiscGone(); break;
    default: break;
  }
}

bool CDVDDevice::FollowDomain(DVD_DOMAIN domain) {
  switch (domain) {
    case DVD_DOMAIN_VideoManagerMenu:
    case DVD_DOMAIN_VideoTitleSetMenu: menuShown = true; return true;
    case DVD_DOMAIN_Title: menuShown = false; return true;
    default: return false;
  }
}

// Somebody else took the disc out: as with Eject, but the tray is left as it is.
void CDVDDevice::OnDiscGone() {
  CloseDisc();
  menuShown = false;
  ShowNoDisc();
  UpdateStateLamps();
}

void CDVDDevice::OnTitleChange(std::uint32_t title) {
  currentTitle = title;
  itemCount = 0;
  if (title == kNoTitle) return;
  ULONG time = 0;
  ULONG chapters = 0;
  navigator.info->GetTotalTitleTime(&time);
  navigator.info->GetNumberOfChapters(title, &chapters);
  titleTime = time;
  itemCount = static_cast<int>(chapters);
  SetDisplayElement(kOfLabel, 1);
  ShowDisplayNumber(itemCount, false, true);
}

void CDVDDevice::OnChapterStart(int chapter) {
  SetDisplayElement(kChapterLabel, 1);
  ShowDisplayNumber(chapter, false, false);
  currentNumber = chapter;
}

}  // namespace quorvex
