// The Media Files page: whether files play as soon as they are loaded. The box is shown and cannot be
// changed.
#include "devices/config_store.h"
#include "resources/ids.h"
#include "setup/pages.h"
#include "setup/stored_boxes.h"

namespace quorvex {
namespace {

constexpr char kSection[] = "MEDIA FILE";
constexpr char kAutoPlay[] = "AutoPlay";

class MediaFilesPage final : public SetupPage {
 public:
  MediaFilesPage() : SetupPage(IDD_SETUP_MEDIA_FILES) {}

 private:
  void OnCreate() override {
    LoadCheckBox(ReadConfig(), Window(), kSection, kAutoPlay, 1, IDC_FILE_AUTO_PLAY);
  }

  void OnApply() override {
    TellConfigResult(UpdateConfig([this](IniDocument& store) {
      SaveCheckBox(store, Window(), kSection, kAutoPlay, IDC_FILE_AUTO_PLAY);
    }));
  }
};

}  // namespace

std::unique_ptr<SetupPage> MakeMediaFilesPage() { return std::make_unique<MediaFilesPage>(); }

}  // namespace quorvex
