// The one window that shows a picture, whatever plays: a skinned frame around the renderer's own window.
#pragma once

#include <windows.h>

#include <strmif.h>

#include <control.h>

#include <memory>

#include "base/geometry.h"
#include "video/picture_user.h"
#include "video/video_layout.h"

namespace quorvex {

class CVWindow {
 public:
  // Makes the frame, hidden.
  CVWindow();
  CVWindow(const CVWindow&) = delete;
  CVWindow& operator=(const CVWindow&) = delete;

  // Shows a renderer's picture of a native size (pixels; neither may be 0; FirstPicture) above the panel, or
  // on the whole screen while `fullScreen` is set. Answers the frame; null when there is none. The renderer
  // stays its graph's.
  HWND Attach(IVideoWindow* renderer, int width, int height);

  // Takes over the renderer of a graph that was built anew; the frame stays as it is.
  HWND Reattach(IVideoWindow* renderer);

  // Lets go of the renderer, whose graph is about to be released.
  void Detach();

  // Destroys the frame.
  void Destroy();

  // Each answers `fullScreen`, as it is then.
  bool ToggleFullScreen();
  bool EnterFullScreen();
  // Puts the frame over the whole screen, as large as that is now; `flags`: SWP_... of SetWindowPos.
  void FillScreen(UINT flags = 0) const;
  // On the whole screen: puts the frame in front of a panel that was raised.
  void CoverPanel() const;
  bool LeaveFullScreen();

  // Places the picture for a frame of a size (client pixels).
  void LayoutVideo(int width, int height);

  // What the frame's rectangle (screen) becomes while the user drags an edge (WMSZ number).
  void ConstrainSizing(int edge, RECT& rect) const;

  // The hit-test code of a point of the screen.
  [[nodiscard]] int HitTest(int x, int y) const;

  [[nodiscard]] HWND GetRendererWindow() const { return rendererWindow; }
  [[nodiscard]] Rect GetVideoRect() const { return videoRect; }  // in the frame
  [[nodiscard]] HWND Frame() const { return frameWindow; }

 private:
  void SetVideoRect(const Rect& rect);
  void FitFullScreen(Size area);
  void TakeOver(IVideoWindow* renderer);

  IVideoWindow* videoWindow = nullptr;
  RECT restoreRect{};
  HWND rendererWindow = nullptr;
  HWND frameWindow = nullptr;
  Size videoSize;
  Rect videoRect;
  HitZones hitZones{};
};

// The video window; null when there is none.
extern std::unique_ptr<CVWindow> theVideoWindow;

// The one way in which the video window ends.
void DeleteVideoWindow();

// Registers the frame's class, "PVideo"; false when that fails.
bool RegisterVideoClass();

}  // namespace quorvex
