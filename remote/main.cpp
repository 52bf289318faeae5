// qvremote: works the running remote control from scripts and file managers.
#include <windows.h>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "base/full_path.h"
#include "remote/key_names.h"
#include "remote/remote_protocol.h"

namespace quorvex {
namespace {

constexpr char kUsage[] =
    "qvremote open FILE...      play these files, in this order; Quorvex is started when it does not run\n"
    "qvremote key NAME|ID...    press keys of the remote control, one after the other\n"
    "qvremote state             say what plays, one name=value a line\n"
    "Keys:";
constexpr DWORD kStartPatienceMs = 20000;
constexpr UINT kAnswerPatienceMs = 10000;
constexpr DWORD kPollMs = 5;

std::string stateText;

int Complain(const std::string& text) {
  std::fprintf(stderr, "qvremote: %s\n", text.c_str());
  return 1;
}

// The window that messages come from, and that the state comes to.
HWND CreateSender() {
  WNDCLASSA sender{};
  sender.lpfnWndProc = [](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> LRESULT {
    if (message != WM_COPYDATA) return ::DefWindowProcA(window, message, wParam, lParam);
    const auto& data = *reinterpret_cast<const COPYDATASTRUCT*>(lParam);
    if (data.dwData != kRemoteState) return 0;
    stateText.assign(static_cast<const char*>(data.lpData), data.cbData);
    return 1;
  };
  sender.lpszClassName = "QuorvexRemote";
  ::RegisterClassA(&sender);
  return ::CreateWindowA("QuorvexRemote", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
}

HWND FindPanel() { return ::FindWindowA("PControl", "Quorvex"); }

// Starts the quorvex.exe beside this program and waits for its panel.
HWND StartPanel() {
  char path[MAX_PATH] = "";
  ::GetModuleFileNameA(nullptr, path, MAX_PATH);
  std::string program = path;
  program = '"' + program.substr(0, program.rfind('\\') + 1) + "quorvex.exe\"";
  STARTUPINFOA startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  if (::CreateProcessA(nullptr, program.data(), nullptr, nullptr, FALSE, DETACHED_PROCESS, nullptr, nullptr,
                       &startup, &process) == FALSE) {
    return nullptr;
  }
  ::WaitForInputIdle(process.hProcess, kStartPatienceMs);
  ::CloseHandle(process.hThread);
  ::CloseHandle(process.hProcess);
  return FindPanel();
}

// What the panel answers; nothing when it does not.
std::optional<RemoteAnswer> Ask(HWND panel, ULONG_PTR kind, std::string_view bytes) {
  static const HWND sender = CreateSender();
  COPYDATASTRUCT data{kind, static_cast<DWORD>(bytes.size()), const_cast<char*>(bytes.data())};
  DWORD_PTR answer = 0;
  const LRESULT answered =
      ::SendMessageTimeoutA(panel, WM_COPYDATA, reinterpret_cast<WPARAM>(sender),
                            reinterpret_cast<LPARAM>(&data), SMTO_NORMAL, kAnswerPatienceMs, &answer);
  return answered != 0 ? std::optional(static_cast<RemoteAnswer>(answer)) : std::nullopt;
}

int Send(HWND panel, ULONG_PTR kind, std::string_view bytes) {
  if (panel == nullptr) return Complain("Quorvex does not run");
  const std::optional<RemoteAnswer> answer = Ask(panel, kind, bytes);
  if (!answer) return Complain("Quorvex does not answer");
  switch (*answer) {
    case RemoteAnswer::kDone: return 0;
    case RemoteAnswer::kBusy: return Complain("Quorvex waits for an answer to a dialog");
    case RemoteAnswer::kRefused: break;
  }
  return Complain("Quorvex refuses");
}

// Waits until the panel has acted on what was pressed, or has ended by it: what a script asks next is then
// true.
void AwaitAction(HWND panel) {
  const ULONGLONG end = ::GetTickCount64() + kAnswerPatienceMs;
  while (::GetTickCount64() < end && Ask(panel, kRemoteAskReady, {}) == RemoteAnswer::kBusy) ::Sleep(kPollMs);
}

int Open(std::span<char*> files) {
  std::string paths;
  for (const char* file : files) {
    const std::string path = FullPath(file);
    if (path.empty() || ::GetFileAttributesA(path.c_str()) == INVALID_FILE_ATTRIBUTES)
      return Complain(std::string("there is no file ") + file);
    paths += path + '\0';
  }
  if (paths.size() > kLargestRemoteMessage) return Complain("that is too many files");
  const HWND panel = FindPanel();
  return Send(panel != nullptr ? panel : StartPanel(), kRemoteOpenFiles, paths);
}

// The command of a key's name or number; 0 when there is none.
int CommandOf(std::string_view key) {
  const auto* named = std::find_if(kKeyNames.begin(), kKeyNames.end(),
                                   [key](const KeyName& candidate) { return candidate.name == key; });
  if (named != kKeyNames.end()) return named->command;
  int number = 0;
  const auto [end, error] = std::from_chars(key.data(), key.data() + key.size(), number);
  return error == std::errc() && end == key.data() + key.size() && number >= kCommandPlay ? number : 0;
}

int PressKeys(std::span<char*> keys) {
  for (const char* key : keys) {
    if (CommandOf(key) == 0) return Complain(std::string("there is no key ") + key);
  }
  for (const char* key : keys) {
    const int command = CommandOf(key);
    const std::string_view bytes(reinterpret_cast<const char*>(&command), sizeof command);
    const HWND panel = FindPanel();
    if (const int failed = Send(panel, kRemotePressKey, bytes); failed != 0) return failed;
    AwaitAction(panel);
  }
  return 0;
}

int PrintState() {
  if (const int failed = Send(FindPanel(), kRemoteAskState, {}); failed != 0) return failed;
  std::fputs(stateText.c_str(), stdout);
  return 0;
}

int Run(std::span<char*> arguments) {
  const std::string command = arguments.empty() ? "" : arguments[0];
  if (command == "open" && arguments.size() > 1) return Open(arguments.subspan(1));
  if (command == "key" && arguments.size() > 1) return PressKeys(arguments.subspan(1));
  if (command == "state" && arguments.size() == 1) return PrintState();
  std::fputs(kUsage, stderr);
  for (const KeyName& key : kKeyNames) std::fprintf(stderr, " %s", std::string(key.name).c_str());
  std::fputs("\n", stderr);
  return 2;
}

}  // namespace
}  // namespace quorvex

int main(int count, char** arguments) {
  return quorvex::Run(std::span(arguments, static_cast<std::size_t>(count)).subspan(1));
}
