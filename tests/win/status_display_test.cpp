#include "panel/status_display.h"

#include <commctrl.h>

#include <vector>

#include "panel/shown_colours.h"
#include "panel/skin.h"
#include "tests/support/panel.h"

namespace quorvex {
namespace {

class StatusDisplayTest : public PanelTest {
 protected:
  StatusDisplayTest() {
    ::UpdateWindow(mainWindow);
    ::SetWindowSubclass(mainWindow, Watch, 1, reinterpret_cast<DWORD_PTR>(&painted));
  }
  ~StatusDisplayTest() override { ::RemoveWindowSubclass(mainWindow, Watch, 1); }

  static LRESULT CALLBACK Watch(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                DWORD_PTR painted) {
    RECT update{};
    if (message == WM_PAINT && ::GetUpdateRect(window, &update, FALSE) != FALSE) {
      reinterpret_cast<std::vector<Rect>*>(painted)->push_back(
          {update.left, update.top, update.right, update.bottom});
    }
    return ::DefSubclassProc(window, message, wParam, lParam);
  }

  // The pixels of an element as it would be painted now.
  static std::vector<COLORREF> Pixels(int element) {
    const Rect rect = kDisplayElements[static_cast<std::size_t>(element)].Rectangle();
    const BitmapDc dc = Canvas(kPanelWidth, kPanelHeight);
    PaintPanelBackground(dc.Get());
    PaintStatusDisplay(dc.Get(), {rect.left, rect.top, rect.right, rect.bottom});
    std::vector<COLORREF> pixels;
    for (int y = rect.top; y < rect.bottom; ++y) {
      for (int x = rect.left; x < rect.right; ++x) pixels.push_back(::GetPixel(dc.Get(), x, y));
    }
    return pixels;
  }

  static std::ptrdiff_t Count(const std::vector<COLORREF>& pixels, COLORREF colour) {
    return std::count(pixels.begin(), pixels.end(), colour);
  }

  std::vector<Rect> painted;
};

constexpr COLORREF kLit = RGB(0, 255, 64);  // green over the ghost
constexpr COLORREF kGhost = RGB(0, 64, 64);

TEST_F(StatusDisplayTest, AChangedElementRepaintsItsRectangleOnly) {
  for (const int element :
       {0, 12, static_cast<int>(kPauseLamp), static_cast<int>(kSecondColon), static_cast<int>(kCdLamp)}) {
    painted.clear();
    SetDisplayElement(element, 1);
    ASSERT_EQ(painted.size(), 1U) << element;
    EXPECT_EQ(painted[0], kDisplayElements[static_cast<std::size_t>(element)].Rectangle()) << element;
    SetDisplayElement(element, 1);
    EXPECT_EQ(painted.size(), 1U) << "an equal value paints nothing";
  }
  painted.clear();
  SetDisplayElement(40, 1);
  SetDisplayElement(-1, 1);
  EXPECT_TRUE(painted.empty());
}

TEST_F(StatusDisplayTest, TheTextLineRepaintsWithEveryText) {
  SetDisplayText("same");
  painted.clear();
  SetDisplayText("same");
  ASSERT_EQ(painted.size(), 1U);
  EXPECT_EQ(painted[0], kDisplayElements[kTextLine].Rectangle());
  SetDisplayText(std::string(150, 'x'));
  EXPECT_EQ(ShownText(), std::string(99, 'x'));
  std::string umlauts;
  for (int i = 0; i < 120; ++i) umlauts += "\xC3\xA9";
  SetDisplayText(umlauts);
  EXPECT_EQ(ShownText(), umlauts.substr(0, 198)) << "characters are counted, not bytes";
}

TEST_F(StatusDisplayTest, ALitDigitLiesOverAFaintEight) {
  SetDisplayElement(0, kBlankDigit);
  const std::ptrdiff_t eight = Count(Pixels(0), kGhost);
  EXPECT_GT(eight, 30);
  EXPECT_EQ(Count(Pixels(0), kLit), 0);
  SetDisplayElement(0, 1);
  const std::vector<COLORREF> one = Pixels(0);
  EXPECT_GT(Count(one, kLit), 10);
  EXPECT_GT(Count(one, kGhost), 10);
  EXPECT_EQ(Count(one, kLit) + Count(one, kGhost) + Count(one, RGB(0, 0, 0)),
            static_cast<std::ptrdiff_t>(one.size()));
  SetDisplayElement(0, 8);
  EXPECT_EQ(Count(Pixels(0), kLit), eight);
  SetDisplayElement(0, 17);
  EXPECT_EQ(Count(Pixels(0), kLit), 0) << "what is no digit is blank";
}

TEST_F(StatusDisplayTest, HighContrastShowsWhatIsLitOnly) {
  const COLORREF white = RGB(255, 255, 255);
  SetDisplayElement(0, 1);
  SetDisplayElement(1, kBlankDigit);
  ShowHighContrast(true);
  const std::vector<COLORREF> one = Pixels(0);
  EXPECT_GT(Count(one, white), 10);
  EXPECT_EQ(Count(one, white) + Count(one, RGB(0, 0, 0)), static_cast<std::ptrdiff_t>(one.size()));
  EXPECT_EQ(Count(Pixels(1), white), 0) << "no ghost of an eight";
  ShowHighContrast(false);
  EXPECT_GT(Count(Pixels(1), kGhost), 30);
}

TEST_F(StatusDisplayTest, WhatIsClearedLeavesNothingOfItsOwnBehind) {
  ShowDisplayTimeTenths(0x07563412);
  EXPECT_EQ(Shown(kTenths), 7);
  EXPECT_EQ(Shown(kDecimalPoint), 1);
  SetDisplayElement(kPmLamp, 1);
  ClearDisplayTime();
  for (const int element : {kFirstColon, kSecondColon, kDecimalPoint, kPmLamp}) EXPECT_EQ(Shown(element), 0);
  for (const int element : {kHoursTens, kSecondsUnits, kTenths}) EXPECT_EQ(Shown(element), kBlankDigit);
  for (const int label : {kChannelLabel, kTrackLabel, kOfLabel, kChapterLabel, kFileLabel})
    SetDisplayElement(label, 1);
  ClearDisplayNumbers();
  EXPECT_EQ(Shown(kChannelLabel), 1) << "the channel's label is the TV device's own";
  for (const int label : {kTrackLabel, kOfLabel, kChapterLabel, kFileLabel}) EXPECT_EQ(Shown(label), 0);
}

}  // namespace
}  // namespace quorvex
