// The player's commands to MCI, counted among a script's calls: the one that is to fail does not reach the
// driver.
#pragma once

#include <windows.h>

#include <mmsystem.h>

#include <set>
#include <string>

#include "tests/support/com_fake.h"
#include "tests/support/import_hook.h"

extern "C" decltype(&::mciSendCommandA) __imp_mciSendCommandA;

namespace quorvex {

class MciCalls {
 public:
  static constexpr MCIERROR kAnswer = MCIERR_HARDWARE;  // of the command that fails

  explicit MciCalls(ComScript& itsScript) : script(itsScript) { current = this; }
  MciCalls(const MciCalls&) = delete;
  MciCalls& operator=(const MciCalls&) = delete;
  ~MciCalls() { current = nullptr; }

  // What was opened and not closed.
  std::set<MCIDEVICEID> open;

  // The drive calls itself stopped while it is paused.
  bool pausedIsStopped = false;

 private:
  static MCIERROR WINAPI Send(MCIDEVICEID device, UINT message, DWORD_PTR flags, DWORD_PTR parameters) {
    return current->Take(device, message, flags, parameters);
  }

  MCIERROR Take(MCIDEVICEID device, UINT message, DWORD_PTR flags, DWORD_PTR parameters) {
    if (script.Answer(NameOf(message, flags, parameters)) != S_OK) return kAnswer;
    const MCIERROR error = hook.Platform()(device, message, flags, parameters);
    if (message == MCI_STATUS && pausedIsStopped) {
      auto& status = *reinterpret_cast<MCI_STATUS_PARMS*>(parameters);
      if (status.dwItem == MCI_STATUS_MODE && status.dwReturn == MCI_MODE_PAUSE)
        status.dwReturn = MCI_MODE_STOP;
    }
    if (error == 0 && message == MCI_OPEN)
      open.insert(reinterpret_cast<MCI_OPEN_PARMSA*>(parameters)->wDeviceID);
    if (error == 0 && message == MCI_CLOSE) open.erase(device);
    return error;
  }

  static std::string NameOf(UINT message, DWORD_PTR flags, DWORD_PTR parameters) {
    switch (message) {
      case MCI_OPEN: return "MCI_OPEN";
      case MCI_CLOSE: return "MCI_CLOSE";
      case MCI_PLAY: return "MCI_PLAY";
      case MCI_SET: return (flags & MCI_SET_TIME_FORMAT) != 0 ? "time format" : "door";
      case MCI_STATUS: return QuestionOf(reinterpret_cast<MCI_STATUS_PARMS*>(parameters)->dwItem);
      default: return "MCI command " + std::to_string(message);
    }
  }
  static std::string QuestionOf(DWORD item) {
    switch (item) {
      case MCI_STATUS_MODE: return "mode";
      case MCI_STATUS_MEDIA_PRESENT: return "media present";
      case MCI_CDA_STATUS_TYPE_TRACK: return "track type";
      case MCI_STATUS_NUMBER_OF_TRACKS: return "number of tracks";
      case MCI_STATUS_LENGTH: return "length";
      case MCI_STATUS_POSITION: return "position";
      default: return "question " + std::to_string(item);
    }
  }

  static inline MciCalls* current = nullptr;

  ComScript& script;
  ImportHook<decltype(&::mciSendCommandA)> hook{__imp_mciSendCommandA, Send};
};

}  // namespace quorvex
