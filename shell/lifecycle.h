// What the panel does by itself between its first moment and its last: lamp test, version, automatic start,
// clock, shutdown.
#pragma once

#include <windows.h>

namespace quorvex {

inline constexpr UINT_PTR kLampTestTimer = 101;
inline constexpr UINT_PTR kVersionTimer = 102;
inline constexpr UINT_PTR kClockTimer = 108;

// The sequence of timers begins when the panel is shown.
void StartSequence();

// The lamp test begins; it ends, the version is shown and the last device started; then the clock runs.
void BeginLampTest();
void EndLampTest();
void TickClock();

// Files were handed over: they are played now, or when the lamp test or the dialog that is open is over.
void OnHandedOver();

// The panel goes: settings are saved, the device closed, the message loop ended.
void ShutDown();

}  // namespace quorvex
