// The DVD page: closed captions and their background.
#include "devices/config_store.h"
#include "devices/current_device.h"
#include "resources/ids.h"
#include "setup/pages.h"
#include "setup/stored_boxes.h"

namespace quorvex {
namespace {

constexpr char kSection[] = "DVD";
constexpr char kCaptions[] = "ClosedCaption";
constexpr char kOpaque[] = "CCOpaque";

class DvdPage final : public SetupPage {
 public:
  DvdPage() : SetupPage(IDD_SETUP_DVD) {}

 private:
  void OnCreate() override {
    const IniSnapshot store = ReadConfig();
    LoadCheckBox(store, Window(), kSection, kCaptions, 0, IDC_CAPTIONS_ON);
    LoadRadioPair(store, Window(), kSection, kOpaque, 0, IDC_DVD_TRANSPARENT, IDC_DVD_OPAQUE);
  }

  void OnApply() override {
    TellConfigResult(UpdateConfig([this](IniDocument& store) {
      SaveCheckBox(store, Window(), kSection, kCaptions, IDC_CAPTIONS_ON);
      SaveCheckBox(store, Window(), kSection, kOpaque, IDC_DVD_OPAQUE);
    }));
    if (currentDevice && currentDevice->kind == DeviceType::kDvd) currentDevice->LoadSettings();
  }
};

}  // namespace

std::unique_ptr<SetupPage> MakeDvdPage() { return std::make_unique<DvdPage>(); }

}  // namespace quorvex
