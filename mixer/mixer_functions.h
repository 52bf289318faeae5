// The platform's mixer, as the functions of it that are called: a test puts its own in their place.
#pragma once

#include <windows.h>

#include <mmsystem.h>

namespace quorvex {

struct MixerFunctions {
  decltype(&::mixerGetNumDevs) getNumDevs;
  decltype(&::mixerGetDevCapsA) getDevCaps;
  decltype(&::mixerOpen) open;
  decltype(&::mixerClose) close;
  decltype(&::mixerGetLineInfoA) getLineInfo;
  decltype(&::mixerGetLineControlsA) getLineControls;
  decltype(&::mixerGetControlDetailsA) getControlDetails;
  decltype(&::mixerSetControlDetails) setControlDetails;
};

// Those of winmm.
extern const MixerFunctions kWinmmMixer;

}  // namespace quorvex
