#include "video/video_window.h"

#include <algorithm>
#include <vector>

#include "panel/skin.h"
#include "tests/support/fake_renderer.h"
#include "tests/support/panel.h"
#include "tests/support/recording_device.h"

namespace quorvex {
namespace {

class DvdWithMenu final : public RecordingDevice {
 public:
  explicit DvdWithMenu(std::string& notes) : RecordingDevice(DeviceType::kDvd, notes), heard(notes) {}
  bool IsMenuActive() override { return true; }
  bool MenuClick(int x, int y) override { return Hear("click", x, y); }
  bool MenuPoint(int x, int y) override { return Hear("point", x, y); }

 private:
  bool Hear(const char* what, int x, int y) {
    heard += what + (' ' + std::to_string(x)) + ',' + std::to_string(y) + '\n';
    return true;
  }
  std::string& heard;
};

class VideoWindowTest : public PanelTest {
 protected:
  VideoWindowTest() {
    ::SetWindowPos(mainWindow, nullptr, 245, 829, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    currentDevice = std::make_unique<RecordingDevice>(DeviceType::kFile, log);
  }
  ~VideoWindowTest() override {
    DeleteVideoWindow();
    currentDevice.reset();
    fullScreen = false;
  }

  HWND Show(int width, int height) {
    if (!theVideoWindow) theVideoWindow = std::make_unique<CVWindow>();
    return theVideoWindow->Attach(&renderer, width, height);
  }
  static Rect Place(HWND window) {
    RECT rect{};
    ::GetWindowRect(window, &rect);
    return {rect.left, rect.top, rect.right, rect.bottom};
  }
  static bool IsTopmost(HWND window) { return (::GetWindowLongA(window, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0; }

  // The elements of the on-screen display, as they lie in the renderer's window or, without one, on the
  // desktop.
  static std::vector<HWND> Elements(HWND parent) {
    std::vector<HWND> found;
    for (HWND next = nullptr; (next = ::FindWindowExA(parent, next, "myOSCtl", nullptr)) != nullptr;)
      found.push_back(next);
    return found;
  }

  FakeRenderer renderer;
};

TEST_F(VideoWindowTest, TheFrameStandsAboveThePanelAndHoldsTheRenderer) {
  const HWND frame = Show(640, 480);
  ASSERT_NE(frame, nullptr);
  EXPECT_EQ(Place(frame), (Rect{177, 321, 847, 825}));
  EXPECT_TRUE(::IsWindowVisible(frame));
  EXPECT_EQ(renderer.place, (Rect{15, 12, 655, 492}));
  EXPECT_EQ(::GetParent(renderer.window), frame);
  EXPECT_EQ(theVideoWindow->GetRendererWindow(), renderer.window) << "whatever its class is called";
  EXPECT_EQ(renderer.style, 0x46000000);
  EXPECT_EQ(renderer.drain, frame);
  Show(2000, 1200);
  EXPECT_EQ(Place(frame).top, 0);
  EXPECT_EQ(theVideoWindow->GetRendererWindow(), renderer.window) << "taken over for a second time";
}

TEST_F(VideoWindowTest, TheFrameStandsAboveWhereAMinimisedPanelWas) {
  ::ShowWindow(mainWindow, SW_MINIMIZE);
  EXPECT_EQ(Place(Show(640, 480)), (Rect{177, 321, 847, 825}));
}

TEST_F(VideoWindowTest, OnWindowsTheRendererIsFoundByItsClass) {
  FakeRenderer named("VideoRenderer");
  Show(320, 240);
  theVideoWindow->Detach();
  theVideoWindow->Attach(&named, 320, 240);
  EXPECT_EQ(theVideoWindow->GetRendererWindow(), named.window);
}

TEST_F(VideoWindowTest, FullScreenIsLetterBoxedAndLeavesAsItCame) {
  const HWND frame = Show(720, 360);
  const Rect before = Place(frame);
  EXPECT_TRUE(theVideoWindow->ToggleFullScreen());
  EXPECT_EQ(Place(frame), (Rect{0, 0, 1280, 1024}));
  EXPECT_EQ(renderer.place, (Rect{0, 192, 1280, 832}));
  EXPECT_EQ(theVideoWindow->HitTest(0, 0), HTNOWHERE);
  // The display has got another size: the system has put the window somewhere, and tells everybody.
  ::SetWindowPos(frame, nullptr, 0, 0, 800, 600, SWP_NOZORDER);
  EXPECT_EQ(renderer.place, (Rect{0, 100, 800, 500}));
  ::SendMessageA(frame, WM_DISPLAYCHANGE, 32, MAKELPARAM(1280, 1024));
  EXPECT_EQ(Place(frame), (Rect{0, 0, 1280, 1024}));
  EXPECT_EQ(renderer.place, (Rect{0, 192, 1280, 832}));
  ::SendMessageA(renderer.window, WM_LBUTTONDOWN, 0, 0);
  EXPECT_TRUE(IsTopmost(mainWindow)) << "a click brings the panel in front";
  EXPECT_FALSE(theVideoWindow->ToggleFullScreen());
  EXPECT_EQ(Place(frame), before);
  EXPECT_EQ(renderer.place, (Rect{15, 12, 735, 372}));
  EXPECT_FALSE(IsTopmost(mainWindow));
  EXPECT_FALSE(theVideoWindow->LeaveFullScreen()) << "again changes nothing";
  EXPECT_EQ(Place(frame), before);
}

TEST_F(VideoWindowTest, ADialogComesOverAPictureOnTheWholeScreen) {
  Show(640, 480);
  Press(kCommandFullScreen);
  ::EnableWindow(mainWindow, FALSE);
  EXPECT_TRUE(IsTopmost(mainWindow)) << "with the dialog that it owns";
  ::EnableWindow(mainWindow, TRUE);
  EXPECT_TRUE(PumpUntil([] { return !IsTopmost(mainWindow); }));
  // One dialog that follows another.
  ::EnableWindow(mainWindow, FALSE);
  ::EnableWindow(mainWindow, TRUE);
  ::EnableWindow(mainWindow, FALSE);
  PumpFor(50);
  EXPECT_TRUE(IsTopmost(mainWindow));
  ::EnableWindow(mainWindow, TRUE);
  EXPECT_TRUE(PumpUntil([] { return !IsTopmost(mainWindow); }));
  ::SendMessageA(renderer.window, WM_LBUTTONDOWN, 0, 0);
  ::EnableWindow(mainWindow, FALSE);
  ::EnableWindow(mainWindow, TRUE);
  PumpFor(50);
  EXPECT_TRUE(IsTopmost(mainWindow)) << "it stood over the picture before";
  DeleteVideoWindow();
  EXPECT_FALSE(IsTopmost(mainWindow));
  Press(kCommandHidePlayer);
  EXPECT_TRUE(::IsIconic(mainWindow)) << "there is no picture any more that it could go behind";
  ::ShowWindow(mainWindow, SW_RESTORE);
}

TEST_F(VideoWindowTest, FullScreenOutlivesTheWindow) {
  Show(640, 480);
  Press(kCommandFullScreen);
  DeleteVideoWindow();
  EXPECT_TRUE(fullScreen);
  const HWND frame = Show(640, 480);
  EXPECT_EQ(renderer.place, (Rect{0, 32, 1280, 992}));
  EXPECT_EQ(Place(frame), (Rect{0, 0, 1280, 1024}));
  Press(kCommandFullScreen);
  EXPECT_EQ(Place(frame), (Rect{177, 321, 847, 825})) << "where it would have been";
}

class StillPicture final : public RecordingDevice {
 public:
  explicit StillPicture(std::string& notes) : RecordingDevice(DeviceType::kFile, notes), shown(notes) {}
  void RefreshStillPicture() override { shown += "shown again\n"; }

 private:
  std::string& shown;
};

TEST_F(VideoWindowTest, AStillPictureIsShownAgainInAnotherSize) {
  currentDevice = std::make_unique<StillPicture>(log);
  const HWND frame = Show(640, 480);
  log.clear();
  theVideoWindow->ToggleFullScreen();
  EXPECT_EQ(log, "shown again\n");
  theVideoWindow->ToggleFullScreen();
  ::SetWindowPos(frame, nullptr, 0, 0, 430, 324, SWP_NOMOVE | SWP_NOZORDER);
  EXPECT_EQ(log, "shown again\nshown again\nshown again\n");
}

TEST_F(VideoWindowTest, AFrameWithoutRendererIsHarmless) {
  const HWND frame = Show(640, 480);
  const int placed = renderer.placed;
  theVideoWindow->Detach();
  ::SetWindowPos(frame, nullptr, 0, 0, 300, 300, SWP_NOZORDER);
  EXPECT_EQ(renderer.placed, placed) << "its graph may be gone";
  ::SendMessageA(frame, WM_CLOSE, 0, 0);
  EXPECT_EQ(theVideoWindow, nullptr);
  EXPECT_FALSE(::IsWindow(frame));
}

TEST_F(VideoWindowTest, TheMouseDragsThePictureOrWorksADiscsMenu) {
  const HWND frame = Show(640, 480);
  EXPECT_EQ(::SendMessageA(renderer.window, WM_NCHITTEST, 0, MAKELPARAM(400, 500)), HTCAPTION);
  currentDevice = std::make_unique<DvdWithMenu>(log);
  currentDeviceType = DeviceType::kDvd;
  EXPECT_EQ(::SendMessageA(renderer.window, WM_NCHITTEST, 0, MAKELPARAM(400, 500)), HTCLIENT);
  log.clear();
  ::SendMessageA(frame, WM_MOUSEMOVE, 0, MAKELPARAM(10, static_cast<WORD>(-2)));
  ::SendMessageA(frame, WM_LBUTTONDOWN, 0, MAKELPARAM(30, 40));
  EXPECT_EQ(log, "point 10,-2\nclick 30,40\n");
}

TEST_F(VideoWindowTest, TheSkinIsPaintedAroundThePicture) {
  const HWND frame = Show(320, 240);
  ::UpdateWindow(frame);
  const BitmapDc drawn = Canvas(15, 12);
  DrawBitmapResource(drawn.Get(), 138, 0, 0);
  const HDC dc = ::GetDC(frame);
  for (int i = 0; i < 12; ++i) EXPECT_EQ(::GetPixel(dc, i, i), ::GetPixel(drawn.Get(), i, i)) << i;
  ::ReleaseDC(frame, dc);
}

TEST_F(VideoWindowTest, ATextStandsOverThePictureAndFollowsItsSize) {
  currentDevice->ShowOsdText("12");
  EXPECT_TRUE(Elements(renderer.window).empty()) << "no picture, no text";
  Show(640, 480);
  ShowDisplayNumber(12, true, false);
  const std::vector<HWND> shown = Elements(renderer.window);
  ASSERT_EQ(shown.size(), 1U);
  EXPECT_TRUE(::IsWindowVisible(shown[0]));
  const int height = Place(shown[0]).Height();
  ::SetWindowPos(theVideoWindow->Frame(), nullptr, 0, 0, 350, 264, SWP_NOZORDER | SWP_NOMOVE);
  EXPECT_LT(Place(shown[0]).Height(), height);
  currentDevice->ShowOsdText("VIDEO 1");
  EXPECT_EQ(Elements(renderer.window).size(), 1U) << "in place of the other";
  ::SendMessageA(mainWindow, WM_TIMER, kOsdTimer, 0);
  EXPECT_TRUE(Elements(renderer.window).empty());
}

// A renderer's thread may draw a frame that it began before there was the element.
TEST_F(VideoWindowTest, AnElementOutlivesAFrameThatIsDrawnOverIt) {
  Show(640, 480);
  currentDevice->ShowOsdLevel(31, {.title = "HUE"});
  const HWND segment = Elements(renderer.window).at(5);
  const Rect place = Place(segment);
  const HDC dc = ::GetDC(segment);
  const auto colour = [&] { return ::GetPixel(dc, place.Width() / 2, place.Height() / 2); };
  ::UpdateWindow(segment);
  const COLORREF whole = colour();
  ::PatBlt(dc, 0, 0, place.Width(), place.Height(), BLACKNESS);
  ASSERT_NE(colour(), whole);
  EXPECT_TRUE(PumpUntil([&] { return colour() == whole; }));
  ::ReleaseDC(segment, dc);
}

TEST_F(VideoWindowTest, ALevelBarFollowsTheValueAndItsWindow) {
  Show(640, 480);
  AdjustmentInfo brightness{.barMode = 1, .title = "BRIGHTNESS", .step = 10, .value = 95};
  adjustmentInfo = brightness;
  currentDevice->ShowOsdLevel(31, brightness);
  const std::vector<HWND> before = Elements(renderer.window);
  EXPECT_EQ(before.size(), 32U);
  const auto large = [&] {
    return std::ranges::count_if(before, [](HWND part) { return Place(part).Extent() == Size{8, 24}; });
  };
  EXPECT_EQ(large(), 10);
  adjustmentInfo.value = 101;
  currentDevice->ShowOsdLevel(31, brightness);
  EXPECT_EQ(large(), 11);
  EXPECT_EQ(Elements(renderer.window), before) << "the same bar, brought up to date";
  log.clear();
  for (const int arrow : {kCommandUp, kCommandRight, kCommandLeft}) Press(arrow);
  EXPECT_EQ(log, "Increase\nDecrease\n") << "the arrow keys work on the adjustment";
  DeleteVideoWindow();
  EXPECT_FALSE(IsOsdLevelShown());
  ::SetFocus(Button(kCommandPlay));
  currentDevice->ShowOsdLevel(31, brightness);
  EXPECT_EQ(Elements(nullptr).size(), 32U) << "without a picture it is on the desktop";
  EXPECT_EQ(::GetFocus(), Button(kCommandPlay)) << "and leaves the keyboard where it is";
  currentDevice->HideOsd();
  EXPECT_TRUE(Elements(nullptr).empty());
}

}  // namespace
}  // namespace quorvex
