// The commands of qvdrive for the capture cards.
#pragma once

#include <span>
#include <string>

namespace quorvex {

inline constexpr char kCardUsage[] =
    "qvdrive card on [CARD]         plug a capture card in: tv (a TV tuner), camera (no tuner), capture (no "
    "preview)\n"
    "qvdrive card off [CARD]        pull it out; without a name: all of them\n"
    "qvdrive card status            say which cards are plugged in and what the TV card is tuned to\n"
    "qvdrive card fault NAME VALUE  for tests (0 is none): format (1 GetFormat fails, 2 tells another kind, "
    "3 tells\n"
    "                               0 x 0), refuse-format, refuse-input, refuse-route, no-crossbar, "
    "no-captions,\n"
    "                               slow (milliseconds a picture), slow-tuner (milliseconds a channel)\n";

// What follows "card". 0 when it was done, 1 when it could not be, 2 when it is no such command.
int RunCardCommand(std::span<const std::string> words);

}  // namespace quorvex
