#include "devices/current_device.h"

#include "devices/shared_state.h"
#include "panel/status_display.h"
#include "video/video_window.h"

namespace quorvex {

std::unique_ptr<CDevice> currentDevice;

namespace {

class CurrentPicture final : public PictureUser {
 public:
  bool IsMenuActive() override {
    return currentDeviceType == DeviceType::kDvd && currentDevice && currentDevice->IsMenuActive();
  }
  void MenuClick(int x, int y) override {
    if (currentDevice) currentDevice->MenuClick(x, y);
  }
  void MenuPoint(int x, int y) override {
    if (currentDevice) currentDevice->MenuPoint(x, y);
  }
  void LayoutOsd() override {
    if (currentDevice) currentDevice->LayoutOsd();
  }
  void HideOsd() override {
    if (currentDevice) currentDevice->HideOsd();
  }
  void ResetOsd() override {
    if (currentDevice) currentDevice->ResetOsd();
  }
};

}  // namespace

void ConnectPicture() {
  static CurrentPicture picture;
  SetPictureUser(&picture);
  SetOnScreenText([](const std::string& text) {
    if (currentDevice) currentDevice->ShowOsdText(text);
  });
}

}  // namespace quorvex
