#include "mixer/mixer.h"

#include <algorithm>
#include <array>
#include <memory>
#include <span>
#include <vector>

#include "panel/control_panel.h"
#include "panel/status_display.h"

namespace quorvex {

bool muted = false;
const MixerFunctions kWinmmMixer{
    ::mixerGetNumDevs,
    ::mixerGetDevCapsA,
    ::mixerOpen,
    ::mixerClose,
    ::mixerGetLineInfoA,
    ::mixerGetLineControlsA,
    ::mixerGetControlDetailsA,
    ::mixerSetControlDetails,
};

namespace {

constexpr DWORD kByHandle = MIXER_OBJECTF_HMIXER;
constexpr std::uint32_t kNoControl = 65535;
constexpr std::uint32_t kNoSpeakers = 255;

struct MixerDestination {
  MIXERLINEA line{};
  std::vector<MIXERCONTROLA> controls;
  // Into `controls`.
  std::uint32_t volumeIndex = kNoControl;
  std::uint32_t bassIndex = kNoControl;
  std::uint32_t trebleIndex = kNoControl;
  std::uint32_t muteIndex = kNoControl;
};
using ControlIndex = std::uint32_t MixerDestination::*;

struct KnownControl {
  DWORD type;
  ControlIndex index;
};
constexpr auto kKnownControls = std::to_array<KnownControl>({
    {MIXERCONTROL_CONTROLTYPE_VOLUME, &MixerDestination::volumeIndex},
    {MIXERCONTROL_CONTROLTYPE_BASS, &MixerDestination::bassIndex},
    {MIXERCONTROL_CONTROLTYPE_TREBLE, &MixerDestination::trebleIndex},
    {MIXERCONTROL_CONTROLTYPE_MUTE, &MixerDestination::muteIndex},
});

struct MixerState {
  explicit MixerState(const MixerFunctions& platform) : functions(platform) {}
  MixerState(const MixerState&) = delete;
  MixerState& operator=(const MixerState&) = delete;
  ~MixerState() {
    if (mixer != nullptr) functions.close(mixer);
  }
  [[nodiscard]] HMIXEROBJ Object() const { return reinterpret_cast<HMIXEROBJ>(mixer); }

  const MixerFunctions& functions;
  HMIXER mixer = nullptr;
  std::vector<MixerDestination> destinations;
  std::uint32_t speakersIndex = kNoSpeakers;
};

std::unique_ptr<MixerState> state;
std::uint32_t lastBalance = kCentredBalance;

bool ReadControls(const MixerState& opened, MixerDestination& destination) {
  destination.controls.resize(destination.line.cControls);
  if (destination.controls.empty()) return true;
  MIXERLINECONTROLSA wanted{};
  wanted.cbStruct = sizeof wanted;
  wanted.dwLineID = destination.line.dwLineID;
  wanted.cControls = destination.line.cControls;
  wanted.cbmxctrl = sizeof(MIXERCONTROLA);
  wanted.pamxctrl = destination.controls.data();
  if (opened.functions.getLineControls(opened.Object(), &wanted, MIXER_GETLINECONTROLSF_ALL | kByHandle) !=
      MMSYSERR_NOERROR)
    return false;
  // Of several controls of one type the last one counts.
  for (std::uint32_t i = 0; i < destination.controls.size(); ++i) {
    for (const KnownControl& known : kKnownControls) {
      if (destination.controls[i].dwControlType == known.type) destination.*known.index = i;
    }
  }
  return true;
}

bool ReadDestination(const MixerState& opened, DWORD index, MixerDestination& destination) {
  destination.line.cbStruct = sizeof destination.line;
  destination.line.dwDestination = index;
  opened.functions.getLineInfo(opened.Object(), &destination.line,
                               MIXER_GETLINEINFOF_DESTINATION | kByHandle);
  return ReadControls(opened, destination);
}

bool ReadDestinations(MixerState& opened, DWORD count) {
  opened.destinations.resize(count);
  for (DWORD i = 0; i < count; ++i) {
    if (!ReadDestination(opened, i, opened.destinations[i])) return false;
  }
  const auto speakers = std::find_if(
      opened.destinations.begin(), opened.destinations.end(), [](const MixerDestination& destination) {
        return destination.line.dwComponentType == MIXERLINE_COMPONENTTYPE_DST_SPEAKERS;
      });
  if (speakers != opened.destinations.end())
    opened.speakersIndex = static_cast<std::uint32_t>(speakers - opened.destinations.begin());
  return true;
}

// A control of the speaker line; null when there is none.
const MIXERCONTROLA* SpeakerControl(ControlIndex index) {
  if (!state || state->speakersIndex == kNoSpeakers) return nullptr;
  const MixerDestination& speakers = state->destinations[state->speakersIndex];
  return speakers.*index != kNoControl ? &speakers.controls[speakers.*index] : nullptr;
}

ControlIndex ControlOf(AudioOperation operation) {
  switch (operation) {
    case AudioOperation::kReadBass:
    case AudioOperation::kBassUp:
    case AudioOperation::kBassDown: return &MixerDestination::bassIndex;
    case AudioOperation::kReadTreble:
    case AudioOperation::kTrebleUp:
    case AudioOperation::kTrebleDown: return &MixerDestination::trebleIndex;
    default: return &MixerDestination::volumeIndex;
  }
}

// The platform's request for a control's values, one word a channel.
MIXERCONTROLDETAILS Details(const MIXERCONTROLA& control, std::span<DWORD> values) {
  MIXERCONTROLDETAILS details{};
  details.cbStruct = sizeof details;
  details.dwControlID = control.dwControlID;
  details.cChannels = static_cast<DWORD>(values.size());
  details.cbDetails = sizeof(DWORD);
  details.paDetails = values.data();
  return details;
}

void Read(const MIXERCONTROLA& control, std::span<DWORD> values) {
  MIXERCONTROLDETAILS details = Details(control, values);
  state->functions.getControlDetails(state->Object(), &details, MIXER_GETCONTROLDETAILSF_VALUE);
  for (DWORD& value : values) value = std::min<DWORD>(value, kFullLevel);
}

void Write(const MIXERCONTROLA& control, std::span<DWORD> values) {
  MIXERCONTROLDETAILS details = Details(control, values);
  state->functions.setControlDetails(state->Object(), &details, MIXER_SETCONTROLDETAILSF_VALUE);
}

bool IsUniform(const MIXERCONTROLA& control) {
  return (control.fdwControl & MIXERCONTROL_CONTROLF_UNIFORM) != 0;
}

// A control that is one for all channels answers one value and leaves a second word as it was.
Channels ReadChannels(const MIXERCONTROLA& control) {
  std::array<DWORD, 2> values{};
  Read(control, std::span(values).first(IsUniform(control) ? 1 : 2));
  if (IsUniform(control)) values[1] = values[0];
  return {values[0], values[1]};
}

void WriteChannels(const MIXERCONTROLA& control, Channels channels) {
  std::array<DWORD, 2> values{channels.left, channels.right};
  if (IsUniform(control)) values[0] = std::max(channels.left, channels.right);
  Write(control, std::span(values).first(IsUniform(control) ? 1 : 2));
}

bool IsBalance(AudioOperation operation) {
  return operation == AudioOperation::kBalanceLeft || operation == AudioOperation::kBalanceRight ||
         operation == AudioOperation::kReadBalance;
}

bool OnlyReads(AudioOperation operation) {
  return operation == AudioOperation::kReadVolume || operation == AudioOperation::kReadBalance ||
         operation == AudioOperation::kReadBass || operation == AudioOperation::kReadTreble;
}

}  // namespace

bool OpenMixer(const MixerFunctions& functions) {
  state.reset();
  if (functions.getNumDevs() == 0) return false;
  auto opened = std::make_unique<MixerState>(functions);
  MIXERCAPSA caps{};
  functions.getDevCaps(0, &caps, sizeof caps);
  if (functions.open(&opened->mixer, 0, 0, 0, 0) != MMSYSERR_NOERROR) {
    opened->mixer = nullptr;
    return false;
  }
  if (!ReadDestinations(*opened, caps.cDestinations)) return false;
  state = std::move(opened);
  return true;
}

bool HasAudioControl(AudioOperation operation) { return SpeakerControl(ControlOf(operation)) != nullptr; }

bool HasBalance() {
  const MIXERCONTROLA* const volume = SpeakerControl(&MixerDestination::volumeIndex);
  return volume != nullptr && !IsUniform(*volume);
}

std::uint32_t VolumeBalance(AudioOperation operation) {
  const MIXERCONTROLA* const control = SpeakerControl(&MixerDestination::volumeIndex);
  if (control == nullptr) return 0;
  const Channels channels = ReadChannels(*control);
  std::uint32_t balance = BalanceOf(channels, lastBalance);
  lastBalance = balance;
  std::uint32_t volume = std::max(channels.left, channels.right);
  std::uint32_t& value = IsBalance(operation) ? balance : volume;
  if (OnlyReads(operation) || (IsBalance(operation) && IsUniform(*control))) return value;
  value = Adjusted(operation, value);
  WriteChannels(*control, ChannelsOf(volume, balance));
  return value;
}

std::uint32_t ToneControl(AudioOperation operation) {
  const MIXERCONTROLA* const control = SpeakerControl(ControlOf(operation));
  if (control == nullptr) return 0;
  DWORD value = 0;
  Read(*control, {&value, 1});
  if (OnlyReads(operation)) return value;
  value = Adjusted(operation, value);
  Write(*control, {&value, 1});
  return value;
}

bool ToggleMute() {
  const MIXERCONTROLA* const control = SpeakerControl(&MixerDestination::muteIndex);
  if (control == nullptr) return false;
  muted = !muted;
  DWORD value = muted ? 1 : 0;
  Write(*control, {&value, 1});
  SetButtonState(kCommandMute, muted ? ButtonLook::kLit : ButtonLook::kNormal);
  SetDisplayElement(kMuteLamp, muted ? 1 : 0);
  return true;
}

}  // namespace quorvex
