// The format of the recorded sound, which the user picks in the platform's own dialog.
#include <windows.h>

#include <mmreg.h>
#include <msacm.h>

#include <algorithm>
#include <optional>
#include <vector>

#include "devices/tv/pin_format.h"
#include "devices/tv/tv_device.h"
#include "panel/status_display.h"

namespace quorvex {
namespace {

// A format as the platform's sound functions take it: its record, and what the record says lies behind it.
std::size_t SizeOf(const std::vector<BYTE>& format) {
  return sizeof(WAVEFORMATEX) + reinterpret_cast<const WAVEFORMATEX*>(format.data())->cbSize;
}

// The format with room behind it for that of any codec.
std::vector<BYTE> WithRoom(std::span<const BYTE> format) {
  DWORD largest = 0;
  ::acmMetrics(nullptr, ACM_METRIC_MAX_SIZE_FORMAT, &largest);
  std::vector<BYTE> room(std::max({std::size_t{largest}, format.size(), sizeof(WAVEFORMATEX)}));
  std::copy(format.begin(), format.end(), room.begin());
  room.resize(std::max(room.size(), SizeOf(room)));
  return room;
}

// Lets the user change a format; none when he leaves it as it is.
std::optional<std::vector<BYTE>> AskFormat(HWND owner, std::span<const BYTE> format) {
  std::vector<BYTE> chosen = WithRoom(format);
  ACMFORMATCHOOSEA dialog{};
  dialog.cbStruct = sizeof dialog;
  dialog.fdwStyle = ACMFORMATCHOOSE_STYLEF_INITTOWFXSTRUCT;
  dialog.hwndOwner = owner;
  dialog.pwfx = reinterpret_cast<WAVEFORMATEX*>(chosen.data());
  dialog.cbwfx = static_cast<DWORD>(chosen.size());
  dialog.fdwEnum = ACM_FORMATENUMF_INPUT | ACM_FORMATENUMF_HARDWARE;
  if (::acmFormatChooseA(&dialog) != MMSYSERR_NOERROR) return std::nullopt;
  chosen.resize(std::min(chosen.size(), SizeOf(chosen)));
  return chosen;
}

}  // namespace

void CTVDevice::ChooseAudioFormat(HWND owner) {
  PinFormat format;
  if (!audioStream || FAILED(format.Read(*audioStream.Get()))) return;
  const auto chosen = AskFormat(owner, format.Block());
  if (!chosen || !format.SetBlock(*chosen)) return;
  StopGraph();
  if (FAILED(audioStream->SetFormat(format.Get())))
    SetDisplayText("The sound input does not take this format");
  Play(0, 0);
}

}  // namespace quorvex
