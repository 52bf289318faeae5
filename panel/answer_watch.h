// A driver that never returns would leave the user with a dead panel. A thread of its own sees whether the
// panel's thread still takes its messages; when it has not for long, a box offers to end the program. It goes
// by itself when the panel is back.
#pragma once

#include <windows.h>

namespace quorvex {

// Posted to the panel every time it is asked; answered by GiveSignOfLife.
inline constexpr UINT kAskMessage = WM_APP + 4;

// Begins to watch `panel`, until it is destroyed. It is asked once in `everyMs`, and offers the end after
// kPatience of these without a sign.
inline constexpr DWORD kAskEveryMs = 3000;
inline constexpr int kPatience = 5;
void WatchAnswers(HWND panel, DWORD everyMs = kAskEveryMs);

// Tells the watch that all is well.
void GiveSignOfLife();

// For as long as one lives nobody is asked: work of the user's that takes its time, as copying a recording,
// and takes no messages meanwhile.
class LongWork {
 public:
  LongWork();
  LongWork(const LongWork&) = delete;
  LongWork& operator=(const LongWork&) = delete;
  ~LongWork();
};

}  // namespace quorvex
