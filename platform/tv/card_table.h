// The virtual cards as the platform lists them.
#pragma once

#include <windows.h>

#include <array>
#include <string>

#include "platform/tv/card_state.h"

namespace quorvex {

struct CardTraits {
  CardKind kind;
  const char* command;  // what qvdrive calls it
  const wchar_t* name;  // as the platform lists it
  CLSID id;
  bool hasTuner;
  bool hasPreview;
};

inline constexpr std::array kCards{
    CardTraits{CardKind::kTv,
               "tv",
               L"Quorvex Virtual TV",
               {0x5c0a1f30, 0x7e54, 0x4a2b, {0x9f, 0x61, 0x2d, 0x8e, 0x47, 0xb3, 0x10, 0x01}},
               true,
               true},
    CardTraits{CardKind::kCamera,
               "camera",
               L"Quorvex Virtual Camera",
               {0x5c0a1f30, 0x7e54, 0x4a2b, {0x9f, 0x61, 0x2d, 0x8e, 0x47, 0xb3, 0x10, 0x02}},
               false,
               true},
    CardTraits{CardKind::kCapture,
               "capture",
               L"Quorvex Virtual Capture",
               {0x5c0a1f30, 0x7e54, 0x4a2b, {0x9f, 0x61, 0x2d, 0x8e, 0x47, 0xb3, 0x10, 0x03}},
               false,
               false},
};
inline constexpr CLSID kLineInputClass = {
    0x5c0a1f30, 0x7e54, 0x4a2b, {0x9f, 0x61, 0x2d, 0x8e, 0x47, 0xb3, 0x10, 0x04}};
inline constexpr const wchar_t* kLineInputName = L"Quorvex Virtual Line Input";

// Plugs a card in or out: the platform lists it or does not (for all users, HKEY_LOCAL_MACHINE), and a filter
// of it that runs loses its device. False when the registry cannot be written.
bool PlugIn(CardState& state, const CardTraits& card);
bool PlugOut(CardState& state, const CardTraits& card);

}  // namespace quorvex
