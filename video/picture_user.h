// What the parts of the video window share: who plays the picture, and whether it fills the screen.
#pragma once

namespace quorvex {

// Who plays what the video window shows. The video window knows no devices; they are told through this.
class PictureUser {
 public:
  virtual ~PictureUser() = default;

  // Whether a disc's menu is on the picture, to be worked by the mouse; and the pointer over it.
  virtual bool IsMenuActive() = 0;
  virtual void MenuClick(int x, int y) = 0;
  virtual void MenuPoint(int x, int y) = 0;

  // What becomes of the elements that lie over the picture. LayoutOsd, when the picture has another size: a
  // picture that stands still is then shown once more, for renderers forget it.
  virtual void LayoutOsd() = 0;
  virtual void HideOsd() = 0;
  virtual void ResetOsd() = 0;
};

// Who is told; handed in at start-up and never null afterwards.
void SetPictureUser(PictureUser* user);
PictureUser& CurrentPictureUser();

// Whether the video fills the screen. It outlives the window: the next one then starts so.
extern bool fullScreen;

}  // namespace quorvex
