// Short texts and level bars over the picture. Every element is a small green window of its own; a text's
// window is cut to the outline of its letters. All of it goes four seconds after the last change.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "base/geometry.h"
#include "base/handles.h"
#include "video/adjustment_info.h"
#include "video/osd_layout.h"

namespace quorvex {

inline constexpr UINT_PTR kOsdTimer = 105;

// Whether a level bar is on the screen: the arrow keys then work on its adjustment.
bool IsOsdLevelShown();

class OnScreenDisplay {
 public:
  OnScreenDisplay() = default;
  OnScreenDisplay(const OnScreenDisplay&) = delete;
  OnScreenDisplay& operator=(const OnScreenDisplay&) = delete;

  // Shows a text at the picture's top right; nothing without a picture.
  void ShowOsdText(const std::string& text);

  // Shows the level bar of an adjustment, in so many segments; on the desktop when there is no picture. The
  // bar of the adjustment that is shown already is only brought up to date.
  void ShowOsdLevel(int segmentCount, const AdjustmentInfo& spec);

  // Shows the level that adjustmentInfo has now.
  void RefreshOsdLevel();

  void HideOsd();
  void OnOsdTimer() { HideOsd(); }

  // Lays everything out anew: the picture has another place or size.
  void LayoutOsd();

  // A new video window is made: what still lies on the desktop, or belonged to an earlier window, goes.
  void ResetOsd() { HideOsd(); }

 protected:
  ~OnScreenDisplay() { TakeDown(); }

  // Shows the picture again where an element lay over it, or at its new size. A running film does so by
  // itself.
  virtual void RefreshStillPicture() {}

 private:
  void LayoutOsdLevel();
  void LayoutOsdText();
  void SetOsdLevel(int shownLevel);
  bool PlaceSegments();
  void CreateOsdLevelWindows(int segmentCount, const AdjustmentInfo& spec);
  void CreateOsdTextWindow(const std::string& text);
  bool TakeDown();
  bool DestroyOsdWindows();
  void RestartHideTimer();
  struct TextSizes {
    Size text;
    Size letter;  // of an "M"
  };
  TextSizes CutToText(HWND element, const std::string& text, int height);

  UINT_PTR hideTimer = 0;
  UniqueFont osdFont;  // of the text or title laid out last
  HWND titleWindow = nullptr;
  HWND textWindow = nullptr;
  struct OsdSegment {
    HWND window;
    Rect shown;  // where it lies now
  };
  std::vector<OsdSegment> segments;
  int level = 0;
  AdjustmentInfo levelSpec;  // of the bar, as it was created
};

// Registers the windows' class, "myOSCtl"; false when that fails.
bool RegisterOsdClass();

}  // namespace quorvex
