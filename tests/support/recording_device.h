// A device that writes down what is asked of it.
#pragma once

#include <string>

#include "devices/device.h"

namespace quorvex {

class RecordingDevice : public CDevice {
 public:
  RecordingDevice(DeviceType type, std::string& notes) : CDevice(type), log(notes) {}
  ~RecordingDevice() override { Note("deleted"); }

  bool Open() override { return Note("Open"); }
  bool QueryControls() override { return Note("QueryControls"); }
  bool Activate() override { return Note("Activate"); }
  bool Close() override { return Note("Close"); }
  bool Play(int item, int) override {
    return Note("Play " + std::to_string(item) + (playRate == 1.0 ? "" : " slow"));
  }
  bool Eject() override { return Note("Eject"); }
  bool Pause() override { return Note("Pause"); }
  bool Stop() override { return Note("Stop"); }
  bool NextItem() override { return Note("NextItem"); }
  bool PreviousItem() override { return Note("PreviousItem"); }
  bool FastForward() override { return Note("FastForward"); }
  bool EndScan() override { return Note("EndScan"); }
  bool Rewind() override { return Note("Rewind"); }
  bool PlayChapter(int chapter) override { return Note("PlayChapter " + std::to_string(chapter)); }
  bool Up() override { return Note("Up"); }
  bool Down() override { return Note("Down"); }
  bool ShowMenu(int menu) override { return Note("ShowMenu " + std::to_string(menu)); }
  bool ShowStreamMenu() override { return Note("ShowStreamMenu"); }
  bool SelectSubtitle(int command) override { return Note("SelectSubtitle " + std::to_string(command)); }
  bool SelectAudioTrack(int command) override { return Note("SelectAudioTrack " + std::to_string(command)); }
  bool ToggleClosedCaption() override { return Note("ToggleClosedCaption"); }
  bool SelectVideoInput() override { return Note("SelectVideoInput"); }
  void EnterDigit(int digit) override { Note("EnterDigit " + std::to_string(digit)); }
  bool ConfirmEntry() override { return Note("ConfirmEntry"); }
  bool AddChannel() override { return Note("AddChannel"); }
  bool DeleteChannel() override { return Note("DeleteChannel"); }
  bool RecallLastChannel() override { return Note("RecallLastChannel"); }
  bool Record() override { return Note("Record"); }
  void OnGraphEvent() override { Note("OnGraphEvent"); }
  void OnMciNotify(std::uint32_t code) override { Note("OnMciNotify " + std::to_string(code)); }
  void OnTick() override { Note("OnTick"); }
  void OnRecordTick() override { Note("OnRecordTick"); }
  bool ShowVideoAdjustment() override { return Note("ShowVideoAdjustment"); }
  bool Increase() override { return Note("Increase"); }
  bool Decrease() override { return Note("Decrease"); }
  bool OnRandomChanged() override { return Note("OnRandomChanged"); }
  bool LoadSettings() override { return Note("LoadSettings"); }
  bool BuildPlayOrder() override { return Note("BuildPlayOrder"); }
  bool ApplyPlayOrder() override { return Note("ApplyPlayOrder"); }

 private:
  bool Note(const std::string& what) {
    log += what + '\n';
    return true;
  }

  std::string& log;
};

}  // namespace quorvex
