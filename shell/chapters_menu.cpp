#include "shell/chapters_menu.h"

#include <string>

#include "devices/current_device.h"
#include "devices/shared_state.h"
#include "panel/commands.h"
#include "panel/popup_menu.h"

namespace quorvex {

UniqueMenu BuildChaptersMenu(int chapterCount, int playingChapter) {
  UniqueMenu menu(::CreatePopupMenu());
  ::AppendMenuA(menu.Get(), MF_STRING | MF_DISABLED, 0, "Chapters");
  for (int i = 0; i < chapterCount; ++i) {
    const UINT column = i % 10 == 9 ? MF_MENUBARBREAK : 0;
    const UINT check = i == playingChapter - 1 ? MF_CHECKED : MF_UNCHECKED;
    ::AppendMenuA(menu.Get(), MF_STRING | column | check,
                  static_cast<UINT_PTR>(kFirstChapterCommand) + static_cast<UINT_PTR>(i),
                  std::to_string(i + 1).c_str());
  }
  return menu;
}

void ShowChaptersMenu(int command) {
  if (!currentDevice || currentDeviceType != DeviceType::kDvd) return;
  const int playing = currentDevice->IsMenuActive() ? 0 : currentDevice->currentNumber;
  const UniqueMenu menu = BuildChaptersMenu(currentDevice->itemCount, playing);
  if (menu) ShowAtButton(menu.Get(), command);
}

}  // namespace quorvex
