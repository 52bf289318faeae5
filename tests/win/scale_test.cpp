// The panel on a display of twice the usual density, as the setting in quorvex.ini asks for it.
#include "panel/scale.h"

#include <windows.h>

#include <commctrl.h>

#include <fstream>
#include <iterator>
#include <optional>
#include <vector>

#include "panel/shown_colours.h"
#include "resources/ids.h"
#include "tests/support/fake_renderer.h"
#include "tests/support/panel.h"
#include "tests/support/recording_device.h"
#include "video/video_window.h"

namespace quorvex {
namespace {

// The setting, in the quorvex.ini that a start reads; the file is put back afterwards.
class ScaleSetting {
 public:
  explicit ScaleSetting(const char* value) {
    char folder[MAX_PATH] = "";
    ::GetWindowsDirectoryA(folder, MAX_PATH);
    path = StorePath(folder, "quorvex.ini");
    if (std::ifstream file(path, std::ios::binary); file)
      before = std::string{std::istreambuf_iterator<char>(file), {}};
    Write(std::string("[QUORVEX]\r\nAutoStartDevice=0\r\nScale=") + value + "\r\n");
  }
  ScaleSetting(const ScaleSetting&) = delete;
  ScaleSetting& operator=(const ScaleSetting&) = delete;
  ~ScaleSetting() {
    before ? Write(*before) : static_cast<void>(::DeleteFileA(path.c_str()));
    SetScale(1);
  }

 private:
  void Write(const std::string& bytes) const { std::ofstream(path, std::ios::binary) << bytes; }

  std::string path;
  std::optional<std::string> before;
};

struct Doubled {
  ScaleSetting setting{"2"};
};

class ScaledPanelTest : private Doubled, public PanelTest {
 protected:
  static Rect PlaceIn(HWND parent, HWND window) {
    RECT rect{};
    ::GetWindowRect(window, &rect);
    ::MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&rect), 2);
    return {rect.left, rect.top, rect.right, rect.bottom};
  }
};

// What the panel's window was sent instead of acting on it.
std::vector<int> commands;
LRESULT CALLBACK NoteCommands(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR) {
  if (message != WM_COMMAND) return ::DefSubclassProc(window, message, wParam, lParam);
  commands.push_back(LOWORD(wParam));
  return 0;
}

TEST_F(ScaledPanelTest, EveryKeyIsHitWhereItIsDrawn) {
  ::SetWindowSubclass(mainWindow, NoteCommands, 7, 0);
  const Rect screen{0, 0, ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN)};
  const int left = (screen.right - 1068) / 2;
  EXPECT_EQ(PlaceIn(nullptr, mainWindow),
            (Rect{left, screen.bottom - 390, left + 1068, screen.bottom - 390 + 230}));
  for (const ButtonLayout& key : kButtons) {
    const Rect rect{2 * key.x, 2 * key.y, 2 * (key.x + key.width), 2 * (key.y + key.height)};
    EXPECT_EQ(PlaceIn(mainWindow, Button(key.command)), rect) << key.command;
    for (const POINT corner : {POINT{rect.left, rect.top}, POINT{rect.right - 1, rect.bottom - 1}}) {
      const HWND hit = ::ChildWindowFromPoint(mainWindow, corner);
      commands.clear();
      ::SendMessageA(hit, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(1, 1));
      ::SendMessageA(hit, WM_LBUTTONUP, 0, MAKELPARAM(1, 1));
      EXPECT_EQ(commands, (std::vector<int>{key.command}));
    }
  }
  ::RemoveWindowSubclass(mainWindow, NoteCommands, 7);
}

// Colours of the panel's own drawing, in pixels.
class ScaledDrawingTest : public ScaledPanelTest {
 protected:
  static constexpr int kWidth = 1068;
  static constexpr int kHeight = 230;
  static constexpr Rect kWhole{0, 0, kWidth, kHeight};

  ScaledDrawingTest() {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = kWidth;
    info.bmiHeader.biHeight = -kHeight;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    canvas = BitmapDc(UniqueBitmap(::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0)));
    pixels = static_cast<const std::uint8_t*>(bits);
  }

  [[nodiscard]] COLORREF At(int x, int y) const {
    const std::uint8_t* pixel = pixels + 4 * (y * kWidth + x);
    return RGB(pixel[2], pixel[1], pixel[0]);
  }
  // How many pixels of a rectangle have a colour.
  [[nodiscard]] int Count(const Rect& rect, COLORREF colour) const {
    ::GdiFlush();
    int count = 0;
    for (int y = rect.top; y < rect.bottom; ++y) {
      for (int x = rect.left; x < rect.right; ++x) count += At(x, y) == colour ? 1 : 0;
    }
    return count;
  }
  void DrawKey(int command, UINT state) const {
    DRAWITEMSTRUCT item{};
    item.CtlID = static_cast<UINT>(command);
    item.itemState = state;
    item.hDC = canvas.Get();
    DrawPanelButton(item);
  }
  void DrawDisplay() const { PaintStatusDisplay(canvas.Get(), {0, 0, kWidth, kHeight}); }

  BitmapDc canvas;
  const std::uint8_t* pixels = nullptr;
};

TEST_F(ScaledDrawingTest, ALitKeysFrameIsTwoPixelsWideAndAPressedOneSinksByTwo) {
  const COLORREF green = RGB(0, 255, 0);
  SetButtonState(kCommandRepeat, ButtonLook::kLit);
  DrawKey(kCommandRepeat, 0);
  EXPECT_EQ(Count({0, 0, 48, 36}, green), 48 * 36 - 44 * 32);
  EXPECT_EQ(Count({2, 2, 46, 34}, green), 0);

  DrawKey(kCommandPower, 0);
  ::GdiFlush();
  std::vector<COLORREF> up;
  for (int x = 4; x < 48; ++x) up.push_back(At(x, 20));
  DrawKey(kCommandPower, ODS_SELECTED);
  EXPECT_EQ(Count({0, 0, 52, 6}, RGB(0, 0, 0)), 52 * 6);
  for (int x = 4; x < 48; ++x) EXPECT_EQ(At(x, 22), up[static_cast<std::size_t>(x - 4)]) << x;
}

TEST_F(ScaledDrawingTest, TheDisplayIsDrawnInItsRectangles) {
  SetDisplayElement(kHoursTens, 1);
  SetDisplayElement(kPauseLamp, 1);
  SetDisplayText(std::string(60, 'H'));
  DrawDisplay();
  const COLORREF lit = RGB(0, 255, 64);
  EXPECT_GT(Count({132, 34, 150, 86}, lit), 60);
  EXPECT_EQ(Count({132, 34, 150, 86}, lit), Count(kWhole, lit)) << "one digit only is lit";
  EXPECT_GT(Count({92, 96, 160, 116}, RGB(255, 0, 0)), 400);
  EXPECT_EQ(Count({92, 96, 160, 116}, RGB(255, 0, 0)), Count(kWhole, RGB(255, 0, 0)));
  const COLORREF cyan = RGB(0, 255, 255);
  EXPECT_GT(Count({252, 118, 300, 150}, cyan), 50) << "the text line begins at its left";
  EXPECT_GT(Count({600, 118, 656, 150}, cyan), 50) << "and ends at its right";
  EXPECT_EQ(Count({252, 118, 656, 150}, cyan), Count(kWhole, cyan));
}

TEST_F(ScaledDrawingTest, HighContrastShowsWhatIsLitOnly) {
  SetDisplayElement(kHoursTens, 8);
  SetDisplayElement(kHoursUnits, 1);
  ShowHighContrast(true);
  DrawDisplay();
  const Rect eight{132, 34, 150, 86};
  const Rect one{156, 34, 174, 86};
  const Rect blank{190, 34, 208, 86};
  const COLORREF white = RGB(255, 255, 255);
  EXPECT_GT(Count(eight, white), Count(one, white));
  EXPECT_GT(Count(one, white), 60);
  for (const Rect& digit : {eight, one, blank})
    EXPECT_EQ(Count(digit, white) + Count(digit, RGB(0, 0, 0)), digit.Width() * digit.Height());
  EXPECT_EQ(Count(blank, white), 0) << "no ghost of an eight";
  ShowHighContrast(false);
  DrawDisplay();
  EXPECT_GT(Count(blank, RGB(0, 64, 64)), 100);
}

class ScaledVideoTest : public ScaledPanelTest {
 protected:
  ScaledVideoTest() { currentDevice = std::make_unique<RecordingDevice>(DeviceType::kFile, log); }
  ~ScaledVideoTest() override {
    DeleteVideoWindow();
    currentDevice.reset();
  }
  FakeRenderer renderer;
};

TEST_F(ScaledVideoTest, TheFrameAnswersWhereItIsDrawn) {
  theVideoWindow = std::make_unique<CVWindow>();
  const HWND frame = theVideoWindow->Attach(&renderer, 320, 240);
  const Rect place = PlaceIn(nullptr, frame);
  EXPECT_EQ(place.Extent(), (Size{700, 528}));
  EXPECT_EQ(place.bottom, PlaceIn(nullptr, mainWindow).top - 8);
  EXPECT_EQ(renderer.place, (Rect{30, 24, 670, 504}));
  const auto hit = [&](int x, int y) {
    return ::SendMessageA(frame, WM_NCHITTEST, 0, MAKELPARAM(place.left + x, place.top + y));
  };
  EXPECT_EQ(hit(29, 23), HTTOPLEFT);
  EXPECT_EQ(hit(30, 23), HTTOP);
  EXPECT_EQ(hit(670, 504), HTBOTTOMRIGHT);
  theVideoWindow->Attach(&renderer, 1000, 600);
  EXPECT_EQ(renderer.place.Extent(), (Size{1000, 600})) << "twice that would not fit on the screen";
}

// Both sets of the artwork show the same: where a pixel of the small one is ink, half of its four in the
// large one are, and where it is none, not all.
TEST(ArtworkTest, TheLargeSetShowsWhatTheSmallOneShowsInTwiceTheSize) {
  instance = ::GetModuleHandleA(nullptr);
  const auto load = [](int number) {
    return BitmapDc(UniqueBitmap(::LoadBitmapA(instance, MAKEINTRESOURCEA(number))));
  };
  for (int number = IDB_FRAME_TOP_LEFT; number <= IDB_SEGMENTS; ++number) {
    const SIZE small = load(number).Extent();
    const SIZE large = load(number + IDB_DOUBLED).Extent();
    EXPECT_EQ(large.cx, 2 * small.cx) << number;
    EXPECT_EQ(large.cy, 2 * small.cy) << number;
  }
  const BitmapDc small = load(IDB_SEGMENTS);
  const BitmapDc large = load(IDB_SEGMENTS + IDB_DOUBLED);
  const auto ink = [](const BitmapDc& mask, int x, int y) {
    return ::GetPixel(mask.Get(), x, y) == RGB(0, 0, 0) ? 1 : 0;
  };
  int differing = 0;
  int set = 0;
  for (int y = 0; y < 70; ++y) {
    for (int x = 0; x < 325; ++x) {
      const int quarters = ink(large, 2 * x, 2 * y) + ink(large, 2 * x + 1, 2 * y) +
                           ink(large, 2 * x, 2 * y + 1) + ink(large, 2 * x + 1, 2 * y + 1);
      set += ink(small, x, y);
      differing += ink(small, x, y) == 1 ? 4 - quarters : quarters;
      EXPECT_TRUE(ink(small, x, y) == 1 ? quarters >= 2 : quarters <= 3) << x << ',' << y;
    }
  }
  EXPECT_GT(set, 2000);
  EXPECT_GT(differing, 200) << "the large one is no copy: its slopes are drawn";
}

}  // namespace
}  // namespace quorvex
