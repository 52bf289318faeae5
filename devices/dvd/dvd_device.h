// The DVD device: plays a DVD-Video disc through the platform's navigator, lets the user work the disc's
// menus, and follows the navigator's events on the display.
#pragma once

#include <cstdint>

#include "devices/dvd/dvd_navigator.h"
#include "devices/dvd/dvd_streams.h"
#include "devices/graph_device.h"
#include "devices/mci_drive.h"
#include "panel/display_digits.h"

namespace quorvex {

class CDVDDevice final : public CGraphDevice {
 public:
  CDVDDevice();
  ~CDVDDevice() override;

  bool Open() override;
  bool QueryControls() override;
  bool Activate() override;
  bool Close() override;

  // After an Eject, or when the disc was taken out otherwise, the next Play opens the disc anew. When it cannot be opened the answer is false, and this
  // object is gone with the video window.
  bool Play(int item, int reserved) override;
  bool Eject() override;  // opens the tray, or closes it when it is open
  // A scan goes on at twice the normal speed until Play.
  bool FastForward() override;
  bool Rewind() override;
  bool NextItem() override;
  bool PreviousItem() override;
  bool PlayChapter(int chapter) override;

  // The disc's menus: these answer false when the navigator refuses, or, but for the pointer, when no menu is
  // on.
  bool ShowMenu(int menuKind) override;
  bool Up() override;
  bool Down() override;
  bool Increase() override;
  bool Decrease() override;
  bool ConfirmEntry() override;
  bool IsMenuActive() override { return menuShown; }
  bool MenuClick(int x, int y) override;
  bool MenuPoint(int x, int y) override;

  bool ShowStreamMenu() override;
  bool SelectSubtitle(int command) override { return streams.SelectSubtitle(command); }
  bool SelectAudioTrack(int command) override { return streams.SelectAudioTrack(command); }
  bool ToggleClosedCaption() override;
  bool LoadSettings() override;

  void OnGraphEvent() override;

  // A seek of the graph would part its clock from the navigator's; a navigator shows its stills itself.
  void RefreshStillPicture() override {}

  // The title that plays, 0 when it is not known, and its length.
  [[nodiscard]] std::uint32_t Title() const { return currentTitle == kNoTitle ? 0 : currentTitle; }
  [[nodiscard]] PackedTime TitleTime() const { return titleTime; }

 private:
  static constexpr std::uint32_t kNoTitle = 0xFFFFFFFF;

  [[nodiscard]] bool IsGraphOpen() const { return static_cast<bool>(builder); }
  // Runs the graph and then does something with the navigator.
  template <typename Operation>
  bool RunAnd(const Operation& operation);
  bool SelectButton(HRESULT (STDMETHODCALLTYPE IDvdControl::*select)());
  void ApplyCaptions();
  // Lets go of the disc with its picture.
  void CloseDisc();
  void ShowNoDisc();
  void OnDiscGone();
  // Sets the menu flag by the domain; false for a domain that says nothing about menus.
  bool FollowDomain(DVD_DOMAIN domain);
  void OnTitleChange(std::uint32_t title);
  void OnChapterStart(int chapter);
  void OnEvent(const GraphEvent& event);

  ComPtr<IDvdGraphBuilder> builder;  // null while no graph is open
  DvdNavigator navigator;
  ComPtr<IBasicVideo> basicVideo;
  DvdStreams streams{navigator};
  MciDrive tray;
  std::uint32_t currentTitle = kNoTitle;
  PackedTime titleTime = 0;
};

}  // namespace quorvex
