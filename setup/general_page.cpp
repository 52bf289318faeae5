// The General page: what the shell does at its start and while it runs. Its options are written when the
// program ends.
#include "resources/ids.h"
#include "setup/pages.h"

namespace quorvex {
namespace {

class GeneralPage final : public SetupPage {
 public:
  explicit GeneralPage(const ShellOptions& shellOptions)
      : SetupPage(IDD_SETUP_GENERAL), options(shellOptions) {}

 private:
  void OnCreate() override {
    Check(IDC_AUTO_START, options.autoStartDevice != 0);
    Check(IDC_NO_POWER_SAVING, options.disableApm);
    Check(IDC_NO_SCREEN_SAVER, options.disableScreenSaver);
  }

  void OnApply() override {
    options.autoStartDevice = IsChecked(IDC_AUTO_START) ? 1 : 0;
    options.disableApm = IsChecked(IDC_NO_POWER_SAVING);
    options.disableScreenSaver = IsChecked(IDC_NO_SCREEN_SAVER);
    options.apply();
  }

  ShellOptions options;
};

}  // namespace

std::unique_ptr<SetupPage> MakeGeneralPage(const ShellOptions& options) {
  return std::make_unique<GeneralPage>(options);
}

}  // namespace quorvex
