#include "platform/drive/card_commands.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <iterator>
#include <string_view>

#include "platform/tv/card_table.h"
#include "platform/tv/shared_card.h"

namespace quorvex {
namespace {

struct CardFault {
  std::string_view name;
  CardState::Value CardState::*field;
};
constexpr CardFault kFaults[] = {
    {"format", &CardState::formatFault},       {"refuse-format", &CardState::refuseFormat},
    {"refuse-input", &CardState::refuseInput}, {"refuse-route", &CardState::refuseRoute},
    {"no-crossbar", &CardState::noCrossbar},   {"no-captions", &CardState::noCaptions},
    {"slow", &CardState::slowFrames},          {"slow-tuner", &CardState::slowTuner},
};

int SetFault(CardState& state, const std::string& name, const std::string& text) {
  const auto* fault = std::find_if(std::begin(kFaults), std::end(kFaults),
                                   [&](const CardFault& candidate) { return candidate.name == name; });
  std::uint32_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (fault == std::end(kFaults) || error != std::errc() || end != text.data() + text.size()) return 2;
  state.*(fault->field) = number;
  return 0;
}

int PrintStatus(const CardState& state) {
  for (const CardTraits& card : kCards)
    std::printf("%s=%s\n", card.command, state.IsPlugged(card.kind) ? "on" : "off");
  std::printf("input=%u\nantenna=%u\nchannel=%u\ncountry=%u\n", state.routed.load(), state.antenna.load(),
              state.channel.load(), state.country.load());
  std::printf("previewed=%u\npreview-lost=%u\ncaptured=%u\ncapture-lost=%u\n", state.preview.delivered.load(),
              state.preview.lost.load(), state.capture.delivered.load(), state.capture.lost.load());
  return 0;
}

int Plug(CardState& state, bool in, const std::string& name) {
  // The TV card is what one plugs in; all of them are what one pulls out.
  const std::string wanted = name.empty() && in ? kCards.front().command : name;
  bool known = false;
  bool done = true;
  for (const CardTraits& card : kCards) {
    if (!wanted.empty() && wanted != card.command) continue;
    known = true;
    done = (in ? PlugIn(state, card) : PlugOut(state, card)) && done;
  }
  if (!known) return 2;
  if (!done) std::fputs("qvdrive: the registry (HKEY_LOCAL_MACHINE) cannot be written\n", stderr);
  return done ? 0 : 1;
}

}  // namespace

int RunCardCommand(std::span<const std::string> words) {
  const SharedCard card;
  const auto word = [&](std::size_t at) { return at < words.size() ? words[at] : std::string(); };
  if (word(0) == "on" || word(0) == "off") return Plug(*card, word(0) == "on", word(1));
  if (word(0) == "status") return PrintStatus(*card);
  if (word(0) == "fault" && words.size() == 3) return SetFault(*card, words[1], words[2]);
  return 2;
}

}  // namespace quorvex
