#include "platform/tv/card_table.h"

#include "platform/common/com_server.h"
#include "platform/common/instances.h"

#include <uuids.h>

#include <vector>

namespace quorvex {
namespace {

// The line input comes and goes with the TV card, whose sound it takes.
std::vector<ClassesValue> ListedValues(const CardTraits& card) {
  std::vector<ClassesValue> values = InstanceValues(CLSID_VideoInputDeviceCategory, card.id, card.name);
  if (!card.hasTuner) return values;
  for (ClassesValue& value : InstanceValues(CLSID_AudioInputDeviceCategory, kLineInputClass, kLineInputName))
    values.push_back(std::move(value));
  return values;
}

std::wstring ServerName(const CardTraits& card) { return std::wstring(L"card ") + card.name; }

}  // namespace

bool PlugIn(CardState& state, const CardTraits& card) {
  state.plugged |= static_cast<std::uint32_t>(card.kind);
  return Register(ServerName(card), ListedValues(card)) == S_OK;
}

bool PlugOut(CardState& state, const CardTraits& card) {
  state.plugged &= ~static_cast<std::uint32_t>(card.kind);
  return Unregister(ServerName(card), ListedValues(card)) == S_OK;
}

}  // namespace quorvex
