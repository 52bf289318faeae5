// The Capture page: the file of recordings, the driver's dialogs, the options of recording. The TV device
// stores the options itself.
#include "devices/current_device.h"
#include "devices/tv/capture_file_dialog.h"
#include "resources/ids.h"
#include "setup/capture_entries.h"
#include "setup/pages.h"
#include "setup/subject.h"

namespace quorvex {
namespace {

constexpr int kMasterNone = -1;
constexpr int kMasterVideo = 0;
constexpr int kMasterAudio = 1;

class CapturePage final : public SetupPage {
 public:
  CapturePage() : SetupPage(IDD_SETUP_CAPTURE) {}

 private:
  void OnCreate() override {
    const SetupSubject subject = CurrentSubject();
    if (!IsCapturePageFilled(subject)) return;
    filledFrom = CurrentTvDevice();
    Enable(EnabledCaptureControls(subject));
    Fill(filledFrom->capture);
  }

  bool OnCommand(int control) override {
    if (CTVDevice* const device = Device()) Act(*device, control);
    return EnablesApplyOnCapturePage(control);
  }

  void OnSpin(int spin, int steps) override {
    if (filledFrom == nullptr) return;
    if (spin == IDC_FRAME_RATE_SPIN) {
      Write(IDC_FRAME_RATE, SteppedFrameRate(TextOf(IDC_FRAME_RATE), steps));
    } else {
      Write(IDC_TIME_LIMIT, SteppedTimeLimit(TextOf(IDC_TIME_LIMIT), steps));
    }
  }

  void OnApply() override {
    CTVDevice* const device = Device();
    if (device == nullptr || TakeCaptureEntries(Entries(), device->capture)) return;
    ::MessageBoxA(Window(), "Invalid frame rate.", "Error", MB_ICONHAND);
  }

  void Fill(const CaptureSettings& settings) const {
    Check(IDC_PROMPT_TO_SAVE, settings.promptToSave);
    Check(IDC_CAPTURE_AUDIO, settings.audio);
    Check(IDC_USE_FRAME_RATE, settings.useFrameRate);
    Write(IDC_FRAME_RATE, FrameRateText(settings.frameRate));
    Check(IDC_USE_TIME_LIMIT, settings.timeLimitOn);
    Write(IDC_TIME_LIMIT, std::to_string(settings.timeLimitSeconds));
    Check(settings.masterStream == kMasterNone    ? IDC_MASTER_NONE
          : settings.masterStream == kMasterAudio ? IDC_MASTER_AUDIO
                                                  : IDC_MASTER_VIDEO,
          true);
  }

  [[nodiscard]] CaptureEntries Entries() const {
    const int master = IsChecked(IDC_MASTER_NONE)    ? kMasterNone
                       : IsChecked(IDC_MASTER_AUDIO) ? kMasterAudio
                                                     : kMasterVideo;
    return {.promptToSave = IsChecked(IDC_PROMPT_TO_SAVE),
            .audio = IsChecked(IDC_CAPTURE_AUDIO),
            .frameRate = TextOf(IDC_FRAME_RATE),
            .useFrameRate = IsChecked(IDC_USE_FRAME_RATE),
            .timeLimit = TextOf(IDC_TIME_LIMIT),
            .timeLimitOn = IsChecked(IDC_USE_TIME_LIMIT),
            .masterStream = master};
  }

  void Act(CTVDevice& device, int control) const {
    switch (control) {
      case IDC_AUDIO_FORMAT: device.ChooseAudioFormat(Window()); break;
      case IDC_ALLOCATE_FILE: CaptureFileDialog(device).Run(Window()); break;
      case IDC_SAVE_CAPTURE:
        device.SaveCaptureFile(Window());
        ::RedrawWindow(Window(), nullptr, nullptr,
                       RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
        break;
      case IDC_VIDEO_FORMAT: device.ShowCaptureFormatDialog(Window()); break;
      case IDC_VIDEO_SOURCE: device.ShowCaptureSourceDialog(Window()); break;
      case IDC_VIDEO_DISPLAY: device.ShowCaptureDisplayDialog(Window()); break;
      case IDC_CAPTURE_AUDIO: Enable(IDC_AUDIO_FORMAT, IsChecked(IDC_CAPTURE_AUDIO)); break;
      default: break;
    }
  }

  // The device that the page was filled from, as long as it is the current one.
  [[nodiscard]] CTVDevice* Device() const {
    CTVDevice* const device = CurrentTvDevice();
    return device == filledFrom ? device : nullptr;
  }

  const CTVDevice* filledFrom = nullptr;  // may be gone
};

}  // namespace

std::unique_ptr<SetupPage> MakeCapturePage() { return std::make_unique<CapturePage>(); }

}  // namespace quorvex
