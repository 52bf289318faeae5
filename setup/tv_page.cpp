// The TV page: the tuner's input, the search for channels, the captions' background. The TV device stores
// them itself.
#include "devices/current_device.h"
#include "devices/tv/autotune_dialog.h"
#include "resources/ids.h"
#include "setup/pages.h"
#include "setup/subject.h"

namespace quorvex {
namespace {

class TvPage final : public SetupPage {
 public:
  TvPage() : SetupPage(IDD_SETUP_TV) {}

 private:
  void OnCreate() override {
    settingsTvDevice = CurrentTvDevice();
    Enable(EnabledTvControls(CurrentSubject()));
    if (settingsTvDevice == nullptr) return;
    if (settingsTvDevice->HasTuner()) Check(IsAntenna(*settingsTvDevice) ? IDC_ANTENNA : IDC_CABLE, true);
    Check(settingsTvDevice->captionOpaque ? IDC_OPAQUE_CAPTIONS : IDC_TRANSPARENT_CAPTIONS, true);
  }

  bool OnCommand(int control) override {
    if (control != IDC_AUTO_TUNE) return true;
    if (ConfirmAutotune(Window())) AutoTune();
    return false;
  }

  void OnApply() override {
    CTVDevice* const device = Device();
    if (device == nullptr) return;
    device->SetTunerInput(IsChecked(IDC_ANTENNA) ? TunerFeed::kAntenna : TunerFeed::kCable);
    device->SetCaptionBackground(IsChecked(IDC_OPAQUE_CAPTIONS));
  }

  static bool IsAntenna(const CTVDevice& device) { return device.TunerInput() == TunerFeed::kAntenna; }

  // The device that was current when the page was made, as long as it still is.
  [[nodiscard]] CTVDevice* Device() const {
    CTVDevice* const device = CurrentTvDevice();
    return device == settingsTvDevice ? device : nullptr;
  }

  // The run holds up the loop; what it shows is on the panel and the picture.
  void AutoTune() const {
    CTVDevice* const device = Device();
    if (device == nullptr) return;
    const HWND sheet = ::GetParent(Window());
    ::ShowWindow(sheet, SW_HIDE);
    device->AutoTuneChannels(Window(), IsChecked(IDC_ANTENNA) ? 1 : 0);
    ::ShowWindow(sheet, SW_SHOW);
  }

  const CTVDevice* settingsTvDevice = nullptr;  // may be gone
};

}  // namespace

std::unique_ptr<SetupPage> MakeTvPage() { return std::make_unique<TvPage>(); }

}  // namespace quorvex
