// A driver that never returns would leave the user with a dead panel. A thread of its own sees whether a
// timer of the panel's still comes; when it has not for long, a box offers to end the program. It goes by
// itself when the panel is back.
#pragma once

#include <windows.h>

namespace quorvex {

// Begins to watch `panel`, a window of this thread, until it is destroyed: looks for a sign of life once in
// `everyMs`, and offers the end after kPatience of these without one.
inline constexpr DWORD kLookEveryMs = 3000;
inline constexpr int kPatience = 5;
void WatchAnswers(HWND panel, DWORD everyMs = kLookEveryMs);

// For as long as one lives no sign is missed: work of the user's that takes its time, as copying a recording,
// and takes no messages meanwhile.
class LongWork {
 public:
  LongWork();
  LongWork(const LongWork&) = delete;
  LongWork& operator=(const LongWork&) = delete;
  ~LongWork();
};

}  // namespace quorvex
