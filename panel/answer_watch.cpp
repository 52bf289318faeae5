#include "panel/answer_watch.h"

#include <atomic>
#include <thread>
#include <utility>

namespace quorvex {
namespace {

constexpr UINT_PTR kSignTimer = 109;  // of the panel

std::atomic<unsigned> signs = 0;
std::atomic<int> longWorks = 0;
thread_local unsigned seen = 0;  // of them, by this watch

bool AnySign() {
  const unsigned now = signs;
  return std::exchange(seen, now) != now || longWorks > 0;
}

void CALLBACK GiveSign(HWND /*panel*/, UINT /*message*/, UINT_PTR /*timer*/, DWORD /*time*/) { ++signs; }

BOOL CALLBACK Close(HWND box, LPARAM /*data*/) {
  ::EndDialog(box, IDRETRY);
  return TRUE;
}

// While the watch's box is open.
void CALLBACK LookForSign(HWND /*window*/, UINT /*message*/, UINT_PTR /*timer*/, DWORD /*time*/) {
  if (AnySign()) ::EnumThreadWindows(::GetCurrentThreadId(), Close, 0);
}

// What the stores and a recording hold is on the disk at any moment.
void OfferToEnd(HWND panel, DWORD everyMs) {
  const UINT_PTR timer = ::SetTimer(nullptr, 0, everyMs, LookForSign);
  const int answer = ::MessageBoxA(nullptr,
                                   "A device does not answer. End Quorvex now?\r\n\r\n"
                                   "What was recorded so far is kept.",
                                   "Quorvex", MB_YESNO | MB_DEFBUTTON2 | MB_ICONWARNING | MB_TOPMOST);
  ::KillTimer(nullptr, timer);
  if (answer == IDRETRY) ::SetForegroundWindow(panel);  // only now: it would wait for one that is held up
  if (answer == IDYES) ::TerminateProcess(::GetCurrentProcess(), 1);
}

void Watch(HWND panel, DWORD everyMs) {
  int missed = 0;
  while (::IsWindow(panel) != FALSE) {
    ::Sleep(everyMs);
    missed = AnySign() ? 0 : missed + 1;
    if (missed < kPatience) continue;
    OfferToEnd(panel, everyMs);
    missed = 0;
  }
}

}  // namespace

void WatchAnswers(HWND panel, DWORD everyMs) {
  ::SetTimer(panel, kSignTimer, everyMs / 2, GiveSign);
  std::thread(Watch, panel, everyMs).detach();
}

LongWork::LongWork() { ++longWorks; }
LongWork::~LongWork() { --longWorks; }

}  // namespace quorvex
