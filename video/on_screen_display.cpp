#include "video/on_screen_display.h"

#include <algorithm>
#include <string_view>

#include "base/text.h"
#include "panel/main_window.h"
#include "panel/shown_colours.h"
#include "video/video_window.h"

namespace quorvex {

AdjustmentInfo adjustmentInfo;

namespace {

constexpr char kOsdClass[] = "myOSCtl";
constexpr UINT kHideAfterMs = 4000;
constexpr UINT_PTR kSettleTimer = 107;  // of the panel
constexpr UINT kSettleMs = 150;         // longer than any frame takes to be painted
constexpr int kSettleRounds = 2;

bool levelShown = false;
int lastShownAdjustId = -1;
int settleRounds = 0;  // that are to come

std::string TextOf(HWND element) {
  char text[kLongestOsdText * 4 + 1] = "";
  ::GetWindowTextA(element, text, sizeof text);
  return std::string(FirstCharacters(text, kLongestOsdText));
}

UniqueFont CreateOsdFont(int height) {
  LOGFONTA font{};
  font.lfHeight = -height;
  font.lfWeight = FW_BOLD;
  lstrcpynA(font.lfFaceName, "Arial", LF_FACESIZE);
  return UniqueFont(::CreateFontIndirectA(&font));
}

// With high contrast a text stands in a black box and a segment has a black edge, so that any picture sets
// them off. A text's element keeps the height of its characters, a segment 0.
void PaintHighContrast(HDC dc, HWND element, const RECT& client) {
  const auto black = static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH));
  const auto height = static_cast<int>(::GetWindowLongPtrA(element, GWLP_USERDATA));
  if (height == 0) {
    constexpr LONG kNarrow = 3;
    if (client.right > kNarrow) ::FrameRect(dc, &client, black);
    return;
  }
  ::FillRect(dc, &client, black);
  const UniqueFont font = CreateOsdFont(height);
  const Selected selected(dc, font.Get());
  const std::string text = TextOf(element);
  ::SetBkMode(dc, TRANSPARENT);
  ::SetTextColor(dc, ShownColour(kGreen));
  ::TextOutA(dc, 0, 0, text.c_str(), static_cast<int>(text.size()));
}

void PaintElement(HWND window) {
  PAINTSTRUCT paint{};
  const HDC dc = ::BeginPaint(window, &paint);
  RECT client{};
  ::GetClientRect(window, &client);
  const UniqueBrush bright(::CreateSolidBrush(ShownColour(kGreen)));
  ::FillRect(dc, &client, bright.Get());
  if (IsHighContrastShown()) PaintHighContrast(dc, window, client);
  ::EndPaint(window, &paint);
}

LRESULT CALLBACK OsdProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_PAINT) PaintElement(window);
  return ::DefWindowProcA(window, message, wParam, lParam);
}

// What the elements lie on: the renderer's window, or the desktop.
HWND Host() { return theVideoWindow ? theVideoWindow->GetRendererWindow() : nullptr; }

Size AreaSize() {
  if (theVideoWindow) return theVideoWindow->GetVideoRect().Extent();
  RECT desktop{};
  ::GetWindowRect(::GetDesktopWindow(), &desktop);
  return {desktop.right - desktop.left, desktop.bottom - desktop.top};
}

// The area's corner, in the coordinates of elements that belong to no renderer's window.
Point AreaOrigin() {
  if (!theVideoWindow || Host() != nullptr) return {};
  POINT corner{theVideoWindow->GetVideoRect().left, theVideoWindow->GetVideoRect().top};
  ::ClientToScreen(theVideoWindow->Frame(), &corner);
  return {corner.x, corner.y};
}

// Makes an element that shows nothing yet.
HWND CreateElement(const std::string& text, DWORD visible) {
  const HWND host = Host();
  if (host != nullptr)
    return ::CreateWindowExA(0, kOsdClass, text.c_str(), WS_CHILD | visible, 0, 0, 0, 0, host, nullptr,
                             instance, nullptr);
  const HWND element = ::CreateWindowExA(WS_EX_TOPMOST | WS_EX_TOOLWINDOW, kOsdClass, text.c_str(), WS_POPUP,
                                         0, 0, 0, 0, nullptr, nullptr, instance, nullptr);
  // One that is made visible would take the keyboard.
  if (visible != 0) ::ShowWindow(element, SW_SHOWNOACTIVATE);
  return element;
}

BOOL CALLBACK PaintAgain(HWND window, LPARAM /*data*/) {
  char name[sizeof kOsdClass] = "";
  ::GetClassNameA(window, name, sizeof name);
  if (std::string_view(name) == kOsdClass) ::InvalidateRect(window, nullptr, FALSE);
  return TRUE;
}

void CALLBACK Settle(HWND panel, UINT /*message*/, UINT_PTR timer, DWORD /*time*/) {
  constexpr UINT kFrameOnly =
      SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOREDRAW;
  if (--settleRounds == 0) ::KillTimer(panel, timer);
  const HWND host = Host();
  if (host == nullptr) return;
  ::SetWindowPos(host, nullptr, 0, 0, 0, 0, kFrameOnly);
  ::EnumChildWindows(host, PaintAgain, 0);
}

// The renderer paints from a thread of its own: a frame that was begun before an element came or went still
// leaves out or paints over the places of before, and under Wine sometimes every later one does so
// (docs/testing.md). When that frame is over the renderer is made to ask anew where it may paint, and then
// the elements are painted once more.
void SettleSoon() {
  settleRounds = kSettleRounds;
  ::SetTimer(mainWindow, kSettleTimer, kSettleMs, Settle);
}

void Move(HWND element, const Rect& rect) {
  ::SetWindowPos(element, nullptr, rect.left, rect.top, rect.Width(), rect.Height(),
                 SWP_NOZORDER | SWP_NOCOPYBITS | SWP_NOACTIVATE);
  SettleSoon();
}

void Place(HWND element, const Rect& rect) { Move(element, Shifted(rect, AreaOrigin())); }

Size MeasuredText(HDC dc, const std::string& text) {
  SIZE size{};
  ::GetTextExtentPoint32A(dc, text.c_str(), static_cast<int>(text.size()), &size);
  return {size.cx, size.cy};
}

}  // namespace

bool RegisterOsdClass() {
  WNDCLASSA element{};
  element.lpfnWndProc = OsdProcedure;
  element.hInstance = instance;
  element.hCursor = ::LoadCursorA(nullptr, IDC_ARROW);
  element.hbrBackground = static_cast<HBRUSH>(::GetStockObject(NULL_BRUSH));
  element.lpszClassName = kOsdClass;
  return ::RegisterClassA(&element) != 0;
}

bool IsOsdLevelShown() { return levelShown; }

void OnScreenDisplay::ShowOsdText(const std::string& text) {
  if (!theVideoWindow) return;
  HideOsd();
  CreateOsdTextWindow(text);
  LayoutOsdText();
  RestartHideTimer();
}

void OnScreenDisplay::CreateOsdTextWindow(const std::string& text) {
  if (Host() != nullptr) textWindow = CreateElement(text, 0);
}

void OnScreenDisplay::ShowOsdLevel(int segmentCount, const AdjustmentInfo& spec) {
  if (levelShown && spec.adjustId == lastShownAdjustId) {
    RefreshOsdLevel();
    return;
  }
  if (levelShown) HideOsd();
  CreateOsdLevelWindows(segmentCount, spec);
  LayoutOsdLevel();
  lastShownAdjustId = spec.adjustId;
  levelShown = true;
  RefreshOsdLevel();
}

void OnScreenDisplay::CreateOsdLevelWindows(int segmentCount, const AdjustmentInfo& spec) {
  level = OsdLevelOf(adjustmentInfo, segmentCount);
  levelSpec = spec;
  for (int i = 0; i < segmentCount; ++i) segments.push_back({CreateElement("", WS_VISIBLE), {}});
  titleWindow = CreateElement(spec.title, 0);
}

void OnScreenDisplay::LayoutOsd() {
  LayoutOsdLevel();
  LayoutOsdText();
  RefreshStillPicture();
}

void OnScreenDisplay::LayoutOsdText() {
  if (textWindow == nullptr) return;
  const Size area = AreaSize();
  const std::string text = TextOf(textWindow);
  const TextSizes sizes = CutToText(textWindow, text, OsdTextHeight(text, area.height));
  Place(textWindow, PlaceOsdText(area, sizes.letter, sizes.text));
  ::ShowWindow(textWindow, SW_SHOWNOACTIVATE);
  ::UpdateWindow(textWindow);  // at once, for whoever keeps the loop busy
}

void OnScreenDisplay::LayoutOsdLevel() {
  PlaceSegments();
  if (titleWindow == nullptr) return;
  const Size area = AreaSize();
  const OsdLevelPlaces places = PlaceOsdLevel(area, static_cast<int>(segments.size()));
  const TextSizes sizes = CutToText(titleWindow, TextOf(titleWindow), places.titleHeight);
  Place(titleWindow, PlaceOsdTitle(area, places, sizes.text));
  ::ShowWindow(titleWindow, SW_SHOWNOACTIVATE);
}

// Makes the outline of a text in bold Arial an element's shape; with high contrast it keeps its box.
OnScreenDisplay::TextSizes OnScreenDisplay::CutToText(HWND element, const std::string& text, int height) {
  osdFont = CreateOsdFont(height);
  ::SetWindowLongPtrA(element, GWLP_USERDATA, height);
  const HDC dc = ::GetDC(element);
  TextSizes sizes;
  {
    const Selected selected(dc, osdFont.Get());
    ::SetBkMode(dc, TRANSPARENT);
    ::BeginPath(dc);
    ::TextOutA(dc, 0, 0, text.c_str(), static_cast<int>(text.size()));
    ::EndPath(dc);
    // The window owns the region.
    ::SetWindowRgn(element, IsHighContrastShown() ? nullptr : ::PathToRegion(dc), FALSE);
    sizes = {MeasuredText(dc, text), MeasuredText(dc, "M")};
  }
  ::ReleaseDC(element, dc);
  return sizes;
}

void OnScreenDisplay::RefreshOsdLevel() {
  SetOsdLevel(OsdLevelOf(adjustmentInfo, static_cast<int>(segments.size())));
  RestartHideTimer();
}

void OnScreenDisplay::SetOsdLevel(int shownLevel) {
  level = shownLevel;
  if (PlaceSegments()) RefreshStillPicture();
}

// A step of the level moves one or two segments; the others are left alone, for every move costs a round trip
// to the window system. Answers whether one left a part of the picture that it lay over.
bool OnScreenDisplay::PlaceSegments() {
  bool uncovered = false;
  const bool whole = std::all_of(segments.begin(), segments.end(),
                                 [](const OsdSegment& segment) { return segment.window != nullptr; });
  if (!whole) return uncovered;
  const int count = static_cast<int>(segments.size());
  const OsdLevelPlaces places = PlaceOsdLevel(AreaSize(), count);
  const Point origin = AreaOrigin();
  for (int i = 0; i < count; ++i) {
    const OsdSegmentPlace& place = places.segments[static_cast<std::size_t>(i)];
    const bool large = IsOsdSegmentLarge(i, level, count, levelSpec.barMode);
    OsdSegment& segment = segments[static_cast<std::size_t>(i)];
    const Rect rect = Shifted(large ? place.large : place.small, origin);
    if (rect == segment.shown) continue;
    Move(segment.window, rect);
    uncovered = uncovered || (segment.shown != Rect{} && !rect.Contains(segment.shown));
    segment.shown = rect;
  }
  return uncovered;
}

void OnScreenDisplay::RestartHideTimer() {
  if (hideTimer != 0) ::KillTimer(mainWindow, kOsdTimer);
  hideTimer = ::SetTimer(mainWindow, kOsdTimer, kHideAfterMs, nullptr);
}

void OnScreenDisplay::HideOsd() {
  if (TakeDown()) RefreshStillPicture();
}

// Answers whether there was anything.
bool OnScreenDisplay::TakeDown() {
  if (hideTimer != 0) ::KillTimer(mainWindow, kOsdTimer);
  hideTimer = 0;
  levelShown = false;
  return DestroyOsdWindows();
}

bool OnScreenDisplay::DestroyOsdWindows() {
  std::vector<HWND> elements{titleWindow, textWindow};
  for (const OsdSegment& segment : segments) elements.push_back(segment.window);
  segments.clear();
  titleWindow = nullptr;
  textWindow = nullptr;
  osdFont.Reset();
  std::erase(elements, nullptr);
  for (const HWND element : elements) ::ShowWindow(element, SW_HIDE);
  for (const HWND element : elements) ::DestroyWindow(element);
  if (!elements.empty()) SettleSoon();
  return !elements.empty();
}

}  // namespace quorvex
