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
#include "remote/remote_client.h"

namespace quorvex {
namespace {

constexpr char kUsage[] =
    "qvremote open FILE...      play these files, in this order; Quorvex is started when it does not run\n"
    "qvremote key NAME|ID...    press keys of the remote control, one after the other\n"
    "qvremote state             say what plays, one name=value a line\n"
    "Keys:";
constexpr DWORD kStartPatienceMs = 20000;

int Complain(const std::string& text) {
  std::fprintf(stderr, "qvremote: %s\n", text.c_str());
  return 1;
}

int ComplainOfNoPanel() { return Complain("Quorvex does not run"); }

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

// What the panel's answer means to whoever called this program: its exit code.
int Tell(const std::optional<RemoteAnswer>& answer) {
  if (!answer) return Complain("Quorvex does not answer");
  switch (*answer) {
    case RemoteAnswer::kDone: return 0;
    case RemoteAnswer::kBusy: return Complain("Quorvex waits for an answer to a dialog");
    case RemoteAnswer::kRefused: break;
  }
  return Complain("Quorvex refuses");
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
  const HWND running = FindPanel();
  const HWND panel = running != nullptr ? running : StartPanel();
  return panel != nullptr ? Tell(Ask(panel, kRemoteOpenFiles, paths)) : ComplainOfNoPanel();
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
    const HWND panel = FindPanel();
    if (panel == nullptr) return ComplainOfNoPanel();
    if (const int failed = Tell(PressKey(panel, CommandOf(key))); failed != 0) return failed;
    AwaitAction(panel);
  }
  return 0;
}

int PrintState() {
  const HWND panel = FindPanel();
  if (panel == nullptr) return ComplainOfNoPanel();
  if (const int failed = Tell(Ask(panel, kRemoteAskState, {})); failed != 0) return failed;
  std::fputs(StateTold().c_str(), stdout);
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
