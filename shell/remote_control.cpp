#include "shell/remote_control.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/handles.h"
#include "devices/current_device.h"
#include "devices/dvd/dvd_device.h"
#include "devices/shared_state.h"
#include "devices/tv/tv_device.h"
#include "mixer/mixer.h"
#include "panel/accessible_text.h"
#include "panel/commands.h"
#include "panel/main_window.h"
#include "panel/status_display.h"
#include "remote/remote_message.h"
#include "remote/remote_protocol.h"
#include "shell/open_files.h"

namespace quorvex {
namespace {

int keysWaiting = 0;  // that another program has pressed and that have not been acted on
bool keysHeld = true;
std::vector<int> heldKeys;  // of these

// A process's user, as its token names him; empty when it cannot be asked.
std::vector<BYTE> UserOf(HANDLE process) {
  HANDLE opened = nullptr;
  if (::OpenProcessToken(process, TOKEN_QUERY, &opened) == FALSE) return {};
  const UniqueHandle token(opened);
  DWORD size = 0;
  ::GetTokenInformation(token.Get(), TokenUser, nullptr, 0, &size);
  std::vector<BYTE> user(size);
  if (::GetTokenInformation(token.Get(), TokenUser, user.data(), size, &size) == FALSE) return {};
  return user;
}

bool IsOurUsers(HWND sender) {
  DWORD id = 0;
  ::GetWindowThreadProcessId(sender, &id);
  const UniqueHandle process(::OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, id));
  if (!process) return false;
  std::vector<BYTE> theirs = UserOf(process.Get());
  std::vector<BYTE> ours = UserOf(::GetCurrentProcess());
  if (theirs.empty() || ours.empty()) return false;
  return ::EqualSid(reinterpret_cast<TOKEN_USER*>(theirs.data())->User.Sid,
                    reinterpret_cast<TOKEN_USER*>(ours.data())->User.Sid) != FALSE;
}

RemoteAnswer OpenFiles(std::string_view bytes) {
  std::vector<std::string> paths = PathsIn(bytes);
  if (paths.empty()) return RemoteAnswer::kRefused;
  HandOver(std::move(paths));
  return RemoteAnswer::kDone;
}

RemoteAnswer PressKey(std::string_view bytes) {
  const std::optional<int> command = CommandIn(bytes);
  if (!command) return RemoteAnswer::kRefused;
  ++keysWaiting;
  heldKeys.push_back(*command);
  HoldKeys(keysHeld);
  return RemoteAnswer::kDone;
}

// Keys whose dialog, box or menu waits for the user count as acted on.
RemoteAnswer AskReady() {
  GUITHREADINFO thread{};
  thread.cbSize = sizeof thread;
  ::GetGUIThreadInfo(::GetCurrentThreadId(), &thread);
  const bool userIsAsked = (thread.flags & GUI_INMENUMODE) != 0 || ::IsWindowEnabled(mainWindow) == FALSE;
  return keysWaiting == 0 || userIsAsked ? RemoteAnswer::kDone : RemoteAnswer::kBusy;
}

const char* DeviceName() {
  switch (currentDeviceType) {
    case DeviceType::kTv: return "tv";
    case DeviceType::kDvd: return "dvd";
    case DeviceType::kCd: return "cd";
    case DeviceType::kFile: return "file";
    case DeviceType::kNone: break;
  }
  return "none";
}

// A card's picture just runs: its device has no state of playing.
const char* StateName(const CDevice& device) {
  if (const auto* tv = dynamic_cast<const CTVDevice*>(&device)) return tv->IsGone() ? "stopped" : "playing";
  switch (device.playState) {
    case PlayState::kPlaying: return "playing";
    case PlayState::kPaused: return "paused";
    case PlayState::kStopped:
    case PlayState::kNone: break;
  }
  return "stopped";
}

const char* RepeatName(RepeatMode mode) {
  switch (mode) {
    case RepeatMode::kOne: return "one";
    case RepeatMode::kAll: return "all";
    case RepeatMode::kOff: break;
  }
  return "off";
}

std::string Line(const char* name, const std::string& value) {
  return std::string(name) + '=' + value + '\n';
}

std::string RecordingLines(CTVDevice& tv) {
  const std::optional<RecordingReport> report = tv.Recorded();
  if (!report) return "";
  PackedTime length = 0;
  PackDisplayTime(report->length, length);
  return Line("recording", tv.recording ? "on" : "off") + Line("recorded", TimeAsText(length)) +
         Line("frames", std::to_string(report->frames)) + Line("dropped", std::to_string(report->dropped));
}

// What a card shows (without a tuner it has no channels), and the recording that runs or the last one.
std::string TelevisionLines(CTVDevice& tv) {
  if (!tv.HasTuner()) return RecordingLines(tv);
  return Line("input", tv.InputName()) + Line("channel", std::to_string(std::max(tv.currentNumber, 0))) +
         Line("channels", std::to_string(tv.orderLength)) + RecordingLines(tv);
}

// What plays and of how many; of a disc with films also which of them, and how long it is.
std::string ItemLines() {
  if (auto* tv = dynamic_cast<CTVDevice*>(currentDevice.get())) return TelevisionLines(*tv);
  const std::string items = Line("items", std::to_string(currentDevice->itemCount));
  const auto* dvd = dynamic_cast<const CDVDDevice*>(currentDevice.get());
  if (dvd == nullptr) return Line("item", std::to_string(currentDevice->CurrentEntry())) + items;
  return Line("item", std::to_string(std::max(dvd->currentNumber, 0))) + items +
         Line("film", std::to_string(dvd->Title())) + Line("length", TimeAsText(dvd->TitleTime()));
}

std::string DescribeState() {
  const DisplayContent& shown = ShownContent();
  const auto onOff = [](bool on) { return std::string(on ? "on" : "off"); };
  std::string text = Line("device", currentDevice ? DeviceName() : "none");
  if (currentDevice) {
    text += Line("state", StateName(*currentDevice));
    text += ItemLines();
    text += Line("repeat", RepeatName(currentDevice->repeatMode));
    text += Line("random", onOff(currentDevice->randomOn));
  }
  text += Line("time", TimeAsText(shown.values));
  text += Line("title", shown.text);
  text += Line("mute", onOff(muted));
  return text + Line("lamps", LampsAsText(shown.values));
}

RemoteAnswer SendState(HWND asker) {
  const std::string text = DescribeState();
  COPYDATASTRUCT answer{kRemoteState, static_cast<DWORD>(text.size()), const_cast<char*>(text.data())};
  const LRESULT taken = ::SendMessageA(asker, WM_COPYDATA, reinterpret_cast<WPARAM>(mainWindow),
                                       reinterpret_cast<LPARAM>(&answer));
  return taken != 0 ? RemoteAnswer::kDone : RemoteAnswer::kRefused;
}

RemoteAnswer Answer(HWND sender, const COPYDATASTRUCT& data) {
  if (data.cbData > kLargestRemoteMessage || !IsOurUsers(sender)) return RemoteAnswer::kRefused;
  if (data.dwData == kRemoteAskState) return SendState(sender);
  if (data.dwData == kRemoteAskReady) return AskReady();
  // While a dialog is open its owner, the panel, takes no keys.
  if (::IsWindowEnabled(mainWindow) == FALSE) return RemoteAnswer::kBusy;
  const std::string_view bytes(static_cast<const char*>(data.lpData), data.cbData);
  switch (data.dwData) {
    case kRemoteOpenFiles: return OpenFiles(bytes);
    case kRemotePressKey: return PressKey(bytes);
    default: return RemoteAnswer::kRefused;
  }
}

}  // namespace

void HoldKeys(bool hold) {
  keysHeld = hold;
  if (hold) return;
  for (const int command : std::exchange(heldKeys, {}))
    ::PostMessageA(mainWindow, kRemoteKeyMessage, static_cast<WPARAM>(command), 0);
}

void OnRemoteKey(int command) {
  const bool scans = command == kCommandRewind || command == kCommandFastForward;
  if (!scans) {
    ::SendMessageA(mainWindow, WM_COMMAND, static_cast<WPARAM>(command), 0);
  } else if (currentDevice && ::IsWindowEnabled(mainWindow) != FALSE) {
    // These two act while they are held: here for one step.
    command == kCommandRewind ? currentDevice->Rewind() : currentDevice->FastForward();
    currentDevice->EndScan();
  }
  --keysWaiting;
}

LRESULT OnCopyData(HWND sender, const COPYDATASTRUCT& data) {
  return static_cast<LRESULT>(Answer(sender, data));
}

}  // namespace quorvex
