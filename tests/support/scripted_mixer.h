// A mixer device that a test furnishes with lines, controls and faults. It holds its caller to the platform's
// rules: sizes of records, handles, numbers of channels.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "mixer/mixer_functions.h"

namespace quorvex {

struct ScriptedControl {
  DWORD type = 0;
  std::vector<DWORD> values;  // one word a channel
  bool uniform = false;       // one value for all channels
};

struct ScriptedLine {
  DWORD componentType = 0;
  std::vector<ScriptedControl> controls;
};

// One at a time; its functions reach the one that lives.
class ScriptedMixer {
 public:
  ScriptedMixer() { current = this; }
  ScriptedMixer(const ScriptedMixer&) = delete;
  ScriptedMixer& operator=(const ScriptedMixer&) = delete;
  ~ScriptedMixer() { current = nullptr; }

  UINT devices = 1;
  std::vector<ScriptedLine> lines;
  bool refusesOpen = false;
  bool refusesControls = false;  // the query of a line's controls
  bool refusesWrites = false;

  int open = 0;  // handles that are open
  int reads = 0;
  int writes = 0;

  static constexpr DWORD kSpeakers = MIXERLINE_COMPONENTTYPE_DST_SPEAKERS;
  static constexpr DWORD kVolume = MIXERCONTROL_CONTROLTYPE_VOLUME;
  static constexpr DWORD kBass = MIXERCONTROL_CONTROLTYPE_BASS;
  static constexpr DWORD kTreble = MIXERCONTROL_CONTROLTYPE_TREBLE;
  static constexpr DWORD kMute = MIXERCONTROL_CONTROLTYPE_MUTE;

  static const MixerFunctions& Functions() {
    static constexpr MixerFunctions kFunctions{
        GetNumDevs,        GetDevCaps,       Open, Close, GetLineInfo, GetLineControls,
        GetControlDetails, SetControlDetails};
    return kFunctions;
  }

 private:
  static constexpr DWORD kFirstLineId = 0xFFFF0000;
  static constexpr DWORD kControlsOfALine =
      100;  // a control's id is its line's number times this and its own

  static inline ScriptedMixer* current = nullptr;
  static HMIXER Handle() { return reinterpret_cast<HMIXER>(current); }
  static void ExpectOurs(HMIXEROBJ object) { EXPECT_EQ(reinterpret_cast<HMIXER>(object), Handle()); }

  static UINT WINAPI GetNumDevs() { return current->devices; }
  static MMRESULT WINAPI GetDevCaps(UINT_PTR device, LPMIXERCAPSA caps, UINT size) {
    EXPECT_EQ(device, 0U);
    EXPECT_EQ(size, sizeof *caps);
    caps->cDestinations = static_cast<DWORD>(current->lines.size());
    return MMSYSERR_NOERROR;
  }
  static MMRESULT WINAPI Open(LPHMIXER opened, UINT device, DWORD_PTR callback, DWORD_PTR, DWORD flags) {
    EXPECT_EQ(device, 0U);
    EXPECT_EQ(callback, 0U);
    EXPECT_EQ(flags, 0U);
    if (current->refusesOpen) return MMSYSERR_ALLOCATED;
    ++current->open;
    *opened = Handle();
    return MMSYSERR_NOERROR;
  }
  static MMRESULT WINAPI Close(HMIXER) {
    if (current != nullptr) --current->open;
    return MMSYSERR_NOERROR;
  }
  static MMRESULT WINAPI GetLineInfo(HMIXEROBJ object, LPMIXERLINEA line, DWORD flags) {
    ExpectOurs(object);
    EXPECT_EQ(line->cbStruct, sizeof *line);
    EXPECT_EQ(flags, MIXER_GETLINEINFOF_DESTINATION | MIXER_OBJECTF_HMIXER);
    const ScriptedLine& found = current->lines.at(line->dwDestination);
    line->dwLineID = kFirstLineId + line->dwDestination;
    line->dwComponentType = found.componentType;
    line->cControls = static_cast<DWORD>(found.controls.size());
    return MMSYSERR_NOERROR;
  }
  static MMRESULT WINAPI GetLineControls(HMIXEROBJ object, LPMIXERLINECONTROLSA wanted, DWORD flags) {
    ExpectOurs(object);
    if (current->refusesControls) return MMSYSERR_ERROR;
    EXPECT_EQ(wanted->cbStruct, sizeof *wanted);
    EXPECT_EQ(wanted->cbmxctrl, sizeof(MIXERCONTROLA));
    EXPECT_EQ(flags, MIXER_GETLINECONTROLSF_ALL | MIXER_OBJECTF_HMIXER);
    const DWORD line = wanted->dwLineID - kFirstLineId;
    const std::vector<ScriptedControl>& controls = current->lines.at(line).controls;
    EXPECT_EQ(wanted->cControls, controls.size());
    for (DWORD i = 0; i < controls.size(); ++i) {
      wanted->pamxctrl[i].dwControlID = line * kControlsOfALine + i;
      wanted->pamxctrl[i].dwControlType = controls[i].type;
      wanted->pamxctrl[i].fdwControl = controls[i].uniform ? MIXERCONTROL_CONTROLF_UNIFORM : 0;
    }
    return MMSYSERR_NOERROR;
  }

  // The control that a request is for; null when its number of channels is not the control's.
  static ScriptedControl* Asked(HMIXEROBJ object, const MIXERCONTROLDETAILS& details) {
    ExpectOurs(object);
    EXPECT_EQ(details.cbStruct, sizeof details);
    EXPECT_EQ(details.cMultipleItems, 0U);
    EXPECT_EQ(details.cbDetails, sizeof(DWORD));
    ScriptedControl& control = current->lines.at(details.dwControlID / kControlsOfALine)
                                   .controls.at(details.dwControlID % kControlsOfALine);
    EXPECT_EQ(details.cChannels, control.values.size());
    return details.cChannels == control.values.size() ? &control : nullptr;
  }
  static MMRESULT WINAPI GetControlDetails(HMIXEROBJ object, LPMIXERCONTROLDETAILS details, DWORD flags) {
    ++current->reads;
    EXPECT_EQ(flags, 0U);
    const ScriptedControl* const control = Asked(object, *details);
    if (control == nullptr) return MMSYSERR_INVALPARAM;
    std::copy(control->values.begin(), control->values.end(), static_cast<DWORD*>(details->paDetails));
    return MMSYSERR_NOERROR;
  }
  static MMRESULT WINAPI SetControlDetails(HMIXEROBJ object, LPMIXERCONTROLDETAILS details, DWORD flags) {
    ++current->writes;
    EXPECT_EQ(flags, 0U);
    ScriptedControl* const control = Asked(object, *details);
    if (control == nullptr || current->refusesWrites) return MMSYSERR_INVALPARAM;
    const DWORD* const values = static_cast<const DWORD*>(details->paDetails);
    std::copy(values, values + control->values.size(), control->values.begin());
    return MMSYSERR_NOERROR;
  }
};

}  // namespace quorvex
