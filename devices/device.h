// The abstract device: what a player of any kind is to the remote control. Every key reaches the current
// device through one of its operations; a device overrides those that it supports, the others do mostly
// nothing.
#pragma once

#include <windows.h>

#include <control.h>
#include <strmif.h>

#include <cstdint>
#include <string>

#include "base/com_ptr.h"
#include "devices/device_type.h"
#include "devices/play_order.h"
#include "video/on_screen_display.h"

namespace quorvex {

// Kinds of driver dialogs a capture device may have, as IAMVfwCaptureDialogs numbers them.
enum class CaptureDialog : int { kSource = 1, kFormat = 2, kDisplay = 4 };

class CDevice : public PlayOrder, public OnScreenDisplay {
 public:
  explicit CDevice(DeviceType deviceType);
  CDevice(const CDevice&) = delete;
  CDevice& operator=(const CDevice&) = delete;
  virtual ~CDevice() = default;

  // Opening: the three steps in order, each true when it succeeded. A step that fails has told the user why.
  virtual bool Open() = 0;
  virtual bool QueryControls() = 0;
  virtual bool Activate() = 0;
  // Opens and starts the current play list of a device for files.
  virtual bool LoadMedia() { return true; }
  virtual bool ReservedA() { return true; }

  // Transport. `item`: the item to play from, 0 to resume or play the current one; `reserved` is always 0.
  virtual bool Play(int /*item*/, int /*reserved*/) { return true; }
  virtual bool Eject() { return true; }
  virtual bool Pause();  // a paused device resumes
  virtual bool Stop();
  virtual bool NextItem() { return true; }
  virtual bool PreviousItem() { return true; }
  // While Fast Forward or Rewind is held, again and again; EndScan when it is let go.
  virtual bool FastForward() { return true; }
  virtual bool EndScan() { return true; }
  virtual bool Rewind() { return true; }
  virtual bool PlayChapter(int /*chapter*/) { return true; }

  // Menus, streams and captions. Subtitle and audio choices are command numbers.
  virtual bool Up() { return true; }
  virtual bool Down() { return true; }
  virtual bool ShowMenu(int /*menuKind*/) { return true; }
  virtual bool ShowStreamMenu() { return true; }
  virtual bool SelectSubtitle(int /*command*/) { return true; }
  virtual bool SelectAudioTrack(int /*command*/) { return true; }
  virtual bool ToggleClosedCaption() { return true; }
  virtual bool SelectVideoInput() { return true; }

  // Number entry and channels.
  virtual void EnterDigit(int digit);
  virtual bool ConfirmEntry() { return true; }
  virtual bool AddChannel() { return true; }
  virtual bool DeleteChannel() { return true; }
  virtual bool RecallLastChannel() { return true; }
  virtual bool Record() { return true; }

  // Whether a disc's menu is shown, and the pointer over it (video pixels).
  virtual bool IsMenuActive() { return false; }
  virtual bool MenuClick(int /*x*/, int /*y*/) { return true; }
  virtual bool MenuPoint(int /*x*/, int /*y*/) { return true; }

  // What drivers and timers report.
  virtual void OnGraphEvent() {}
  virtual void OnMciNotify(std::uint32_t /*code*/) {}
  virtual void OnTick() {}
  virtual void OnRecordTick() {}
  virtual void ReservedB() {}

  // Adjustment of the picture.
  virtual bool HasVideoAdjustment() { return false; }
  virtual bool AdjustUp() { return true; }
  virtual bool AdjustDown() { return true; }
  virtual bool ShowVideoAdjustment() { return true; }
  virtual bool Increase() { return true; }
  virtual bool Decrease() { return true; }

  // Settings and play lists; the dialogs are those of the CD play-list editor.
  virtual bool BuildPlayOrder() { return true; }
  virtual bool LoadSettings() { return true; }
  virtual bool SaveSettings() { return true; }
  virtual bool ApplyPlayOrder() { return true; }
  virtual void InitPlaylistDialog(HWND /*dialog*/) {}
  virtual void UpdatePlaylistTotals(HWND /*dialog*/, int /*listId*/) {}
  virtual void SavePlaylistDialog(HWND /*dialog*/) {}
  virtual void ReservedC(int /*argument*/) {}
  virtual void RenamePlaylistTrack(HWND /*dialog*/) {}
  virtual bool OnRandomChanged() { return true; }

  // Capture devices. `tunerInput`: 1 antenna, 0 cable.
  virtual void AutoTuneChannels(HWND /*window*/, int /*tunerInput*/) {}
  virtual bool HasCaptureDialog(CaptureDialog /*dialog*/) { return false; }
  virtual void ShowCaptureFormatDialog(HWND /*parent*/) {}
  virtual void ShowCaptureSourceDialog(HWND /*parent*/) {}
  virtual void ShowCaptureDisplayDialog(HWND /*parent*/) {}
  virtual bool SetCaptureFile(const std::string& /*path*/, std::uint16_t /*megabytes*/) { return true; }

  virtual bool Close() = 0;

  // Shows this device's state on the display's lamps and on the panel's buttons.
  void UpdateStateLamps() const;
  void UpdateButtonStates() const;

  // The Repeat and Random Play keys; devices without a play order ignore them.
  void ToggleRepeat();
  void ToggleRandom();

  // A paused picture is drawn again by a seek to where it is.
  void RefreshStillPicture() override;

  // Ends the typing of a number: the current number is shown again.
  void EndNumberEntry();

  const DeviceType kind;
  PlayState playState = PlayState::kStopped;
  bool recording = false;
  bool captionsOn = false;
  bool captionOpaque = false;  // captions get a background
  bool menuShown = false;
  bool timerOn = false;
  bool scanning = false;  // a fast-forward or rewind scan is running
  RepeatMode repeatMode = RepeatMode::kOff;
  bool randomOn = false;
  HWND videoWindowHandle = nullptr;  // the video window, for a device that shows a picture
  double playRate = 1.0;             // of the next Play: 1.0 normal, 0.5 slow
  int enteredNumber = 0;
  UINT_PTR entryTimer = 0;  // not 0 while the entry's time-out is armed
  bool entryActive = false;
  int highestNumber = 0;   // bounds the number entry
  int currentNumber = -1;  // channel or chapter; shown again when an entry times out
  std::string refusal;     // why a step of opening failed, where no box has told it; for the text line
  std::string notice;      // what opening has to tell when it is done, for the text line

 protected:
  // Pauses the graph.
  bool PauseGraph();

  void SetPlayState(PlayState state);

  // Of the device's filter graph; null while there is none.
  ComPtr<IMediaControl> mediaControl;
  ComPtr<IMediaSeeking> mediaSeeking;
};

inline constexpr UINT_PTR kDeviceTimer = 100;
inline constexpr UINT_PTR kEntryTimer = 104;
inline constexpr UINT_PTR kRecordTimer = 106;
inline constexpr UINT kEntryTimeoutMs = 4000;

// The message by which a device is told of its graph's events.
inline constexpr UINT kGraphMessage = WM_USER + 13;

}  // namespace quorvex
