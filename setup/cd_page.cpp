// The CD page: when a disc plays, and in which order. The order takes effect at once.
#include "devices/cd/cd_playlist_dialog.h"
#include "devices/config_store.h"
#include "devices/current_device.h"
#include "resources/ids.h"
#include "setup/pages.h"
#include "setup/stored_boxes.h"
#include "setup/subject.h"

namespace quorvex {
namespace {

constexpr char kSection[] = "CD";
constexpr char kAutoPlay[] = "AutoPlay";
constexpr char kStopOnExit[] = "StopOnExit";
constexpr char kUsePlayList[] = "UsePlayList";

bool IsCdCurrent() { return currentDevice && currentDevice->kind == DeviceType::kCd; }

class CdPage final : public SetupPage {
 public:
  CdPage() : SetupPage(IDD_SETUP_CD) {}

 private:
  void OnCreate() override {
    const IniSnapshot store = ReadConfig();
    LoadCheckBox(store, Window(), kSection, kAutoPlay, 1, IDC_CD_AUTO_PLAY);
    LoadCheckBox(store, Window(), kSection, kStopOnExit, 0, IDC_STOP_ON_EXIT);
    LoadRadioPair(store, Window(), kSection, kUsePlayList, 0, IDC_ENTIRE_CD, IDC_USE_PLAYLIST);
    Enable(EnabledCdControls(CurrentSubject()));
  }

  bool OnCommand(int control) override {
    if (control != IDC_EDIT_PLAYLIST) return true;
    return IsCdCurrent() && ShowCdPlaylistDialog(Window()) != 0;
  }

  void OnApply() override {
    const IniFile::Result stored = UpdateConfig([this](IniDocument& store) {
      SaveCheckBox(store, Window(), kSection, kAutoPlay, IDC_CD_AUTO_PLAY);
      SaveCheckBox(store, Window(), kSection, kStopOnExit, IDC_STOP_ON_EXIT);
      SaveCheckBox(store, Window(), kSection, kUsePlayList, IDC_USE_PLAYLIST);
    });
    if (IsCdCurrent()) {
      currentDevice->LoadSettings();
      currentDevice->BuildPlayOrder();
      currentDevice->ApplyPlayOrder();
    }
    TellConfigResult(stored);  // in place of the track's title, which the device has just shown
  }
};

}  // namespace

std::unique_ptr<SetupPage> MakeCdPage() { return std::make_unique<CdPage>(); }

}  // namespace quorvex
