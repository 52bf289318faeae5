// player_hand  Works the running player for the tests of the whole program, many times a second: takes one
// order a line from its input, words parted by tabs, and answers with lines, the last of them a full stop.
// Windows are named by their handles in decimal.
#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <span>
#include <string>
#include <vector>

#include "remote/remote_client.h"
#include "tests/support/file_drop.h"
#include "tests/support/player_counts.h"

namespace quorvex {
namespace {

using Words = std::span<const std::string>;

constexpr UINT kPatienceMs = 10000;

long long Number(const std::string& text) { return std::strtoll(text.c_str(), nullptr, 10); }

HWND Window(const std::string& text) {
  return reinterpret_cast<HWND>(static_cast<LONG_PTR>(Number(text)));  // NOLINT(performance-no-int-to-ptr)
}

DWORD ProcessOf(HWND window) {
  DWORD process = 0;
  ::GetWindowThreadProcessId(window, &process);
  return process;
}

void PrintWindow(HWND window) {
  char name[100] = "";
  char text[300] = "";
  ::GetClassNameA(window, name, sizeof name);
  ::GetWindowTextA(window, text, sizeof text);
  std::replace_if(
      text, text + sizeof text, [](char c) { return c == '\n' || c == '\r' || c == '\t'; }, ' ');
  RECT place{};
  ::GetWindowRect(window, &place);
  std::printf("%lld\t%lld\t%d\t%d\t%ld\t%ld\t%ld\t%ld\t%ld\t%s\t%s\n", reinterpret_cast<LONG_PTR>(window),
              reinterpret_cast<LONG_PTR>(::GetWindow(window, GW_OWNER)), ::IsWindowVisible(window),
              ::IsWindowEnabled(window), ::GetWindowLongA(window, GWL_ID), place.left, place.top, place.right,
              place.bottom, name, text);
}

void PrintTime(ULONGLONG begin) { std::printf("ms=%llu\n", ::GetTickCount64() - begin); }

void Press(Words words) {
  const HWND panel = FindPanel();
  const ULONGLONG begin = ::GetTickCount64();
  const auto answer = PressKey(panel, static_cast<int>(Number(words[1])));
  if (answer == RemoteAnswer::kDone) AwaitAction(panel);
  std::printf("answer=%d\n", answer ? static_cast<int>(*answer) : -1);
  PrintTime(begin);
}

// The state that the panel tells, and how long it took to answer.
void Look(Words) {
  const HWND panel = FindPanel();
  const ULONGLONG begin = ::GetTickCount64();
  const auto answer = panel != nullptr ? Ask(panel, kRemoteAskState, {}) : std::nullopt;
  if (!answer) return;
  std::fputs(StateTold().c_str(), stdout);
  PrintTime(begin);
}

void Open(Words words) {
  std::string paths;
  for (const std::string& path : words.subspan(1)) paths += path + '\0';
  const auto answer = Ask(FindPanel(), kRemoteOpenFiles, paths);
  std::printf("answer=%d\n", answer ? static_cast<int>(*answer) : -1);
}

// Under Wine a posted WM_DROPFILES does not take its memory to another process, so it is made there;
// finishing the drop does not free it.
void Drop(Words words) {
  static void* last = nullptr;
  static DWORD lastProcess = 0;
  const std::string bytes = DropBytes({words.begin() + 1, words.end()});
  const HWND panel = FindPanel();
  const DWORD id = ProcessOf(panel);
  const HANDLE process = ::OpenProcess(PROCESS_ALL_ACCESS, FALSE, id);
  if (lastProcess == id) ::VirtualFreeEx(process, last, 0, MEM_RELEASE);
  lastProcess = id;
  last = ::VirtualAllocEx(process, nullptr, bytes.size(), MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
  ::WriteProcessMemory(process, last, bytes.data(), bytes.size(), nullptr);
  ::CloseHandle(process);
  ::PostMessageA(panel, WM_DROPFILES, reinterpret_cast<WPARAM>(last), 0);
}

void Post(Words words) {
  ::PostMessageA(Window(words[1]), static_cast<UINT>(Number(words[2])), static_cast<WPARAM>(Number(words[3])),
                 static_cast<LPARAM>(Number(words[4])));
}

// The panel's tool tips: their delay is what a message sets and another one tells.
HWND TipsOf(HWND panel) {
  HWND tips = nullptr;
  do {
    tips = ::FindWindowExA(nullptr, tips, TOOLTIPS_CLASSA, nullptr);
  } while (tips != nullptr && ::GetWindow(tips, GW_OWNER) != panel);
  return tips;
}

// Waits until the player has taken all messages that were posted to it so far: the mark is posted behind
// them.
void Settle(Words) {
  constexpr int kUsualDelayMs = 5000;
  static int mark = 0;
  const HWND tips = TipsOf(FindPanel());
  const ULONGLONG begin = ::GetTickCount64();
  mark = (mark + 1) % 1000;
  ::PostMessageA(tips, TTM_SETDELAYTIME, TTDT_AUTOPOP, kUsualDelayMs + mark);
  while (::IsWindow(tips) && ::GetTickCount64() - begin < kPatienceMs * 3 &&
         ::SendMessageA(tips, TTM_GETDELAYTIME, TTDT_AUTOPOP, 0) != kUsualDelayMs + mark)
    ::Sleep(1);
  PrintTime(begin);
}

void Send(Words words) {
  DWORD_PTR answer = 0;
  const LRESULT done = ::SendMessageTimeoutA(
      Window(words[1]), static_cast<UINT>(Number(words[2])), static_cast<WPARAM>(Number(words[3])),
      static_cast<LPARAM>(Number(words[4])), SMTO_NORMAL, kPatienceMs, &answer);
  std::printf("%d\t%lld\n", done != 0 ? 1 : 0, static_cast<long long>(answer));
}

void Type(Words words) {
  ::SendMessageTimeoutA(Window(words[1]), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(words[2].c_str()),
                        SMTO_NORMAL, kPatienceMs, nullptr);
}

// Keys go down in their order and up in the reverse one, to the window that has the keyboard.
void Keys(Words words) {
  std::vector<INPUT> inputs;
  const auto add = [&](const std::string& key, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = static_cast<WORD>(Number(key));
    input.ki.dwFlags = flags;
    inputs.push_back(input);
  };
  for (const std::string& key : words.subspan(1)) add(key, 0);
  for (std::size_t i = words.size(); i-- > 1;) add(words[i], KEYEVENTF_KEYUP);
  ::SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

// mouse X Y FLAGS...  Moves the pointer, then presses and releases its keys (MOUSEEVENTF_...).
void Mouse(Words words) {
  ::SetCursorPos(static_cast<int>(Number(words[1])), static_cast<int>(Number(words[2])));
  for (const std::string& flags : words.subspan(3)) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = static_cast<DWORD>(Number(flags));
    ::SendInput(1, &input, sizeof input);
  }
}

void Place(Words words) {
  ::SetWindowPos(Window(words[1]), nullptr, static_cast<int>(Number(words[2])),
                 static_cast<int>(Number(words[3])), static_cast<int>(Number(words[4])),
                 static_cast<int>(Number(words[5])), SWP_NOZORDER | SWP_NOACTIVATE);
}

void Front(Words words) { ::SetForegroundWindow(Window(words[1])); }

// All windows of the player that have no parent, seen or not.
void Tops(Words) {
  const HWND panel = FindPanel();
  if (panel == nullptr) return;
  const auto print = [](HWND window, LPARAM player) -> BOOL {
    if (ProcessOf(window) == static_cast<DWORD>(player)) PrintWindow(window);
    return TRUE;
  };
  ::EnumWindows(print, static_cast<LPARAM>(ProcessOf(panel)));
}

void Inner(Words words) {
  const auto print = [](HWND window, LPARAM) -> BOOL {
    PrintWindow(window);
    return TRUE;
  };
  ::EnumChildWindows(Window(words[1]), print, 0);
}

void Counts(Words) {
  if (const HWND panel = FindPanel(); panel != nullptr) PrintCounts(ProcessOf(panel));
}

struct Order {
  const char* name;
  std::size_t words;  // at least, with the name
  void (*act)(Words);
};
constexpr Order kOrders[] = {
    {"press", 2, Press}, {"look", 1, Look},     {"open", 2, Open}, {"drop", 2, Drop},   {"post", 5, Post},
    {"send", 5, Send},   {"settle", 1, Settle}, {"type", 3, Type}, {"keys", 2, Keys},   {"mouse", 3, Mouse},
    {"place", 6, Place}, {"front", 2, Front},   {"tops", 1, Tops}, {"inner", 2, Inner}, {"counts", 1, Counts},
};

std::vector<std::string> Split(const std::string& line) {
  std::vector<std::string> words(1);
  for (const char c : line) {
    if (c == '\t') {
      words.emplace_back();
    } else if (c != '\r') {
      words.back() += c;
    }
  }
  return words;
}

int Serve() {
  for (std::string line; std::getline(std::cin, line);) {
    const std::vector<std::string> words = Split(line);
    const auto* order = std::find_if(std::begin(kOrders), std::end(kOrders), [&](const Order& candidate) {
      return words[0] == candidate.name && words.size() >= candidate.words;
    });
    if (order == std::end(kOrders)) return 2;
    order->act(words);
    std::puts(".");
    std::fflush(stdout);
  }
  return 0;
}

}  // namespace
}  // namespace quorvex

int main() { return quorvex::Serve(); }
