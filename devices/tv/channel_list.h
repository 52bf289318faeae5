// The channels that the Up and Down keys step through, in a device's play order; and their text in the
// settings.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "devices/play_order.h"

namespace quorvex {

// The longest text of channels that is stored and read.
inline constexpr std::size_t kLongestChannelText = 799;

// Every channel of a tuner's range, at most the first 1000; none when `highest` lies below `lowest`. The
// current entry is then the first.
void SetChannelRange(PlayOrder& channels, int lowest, int highest);

// The last channel that a list of that range has.
int LastChannelOfRange(int lowest, int highest);

// The channels of a stored text, as they are there, the first of them current; of a long text those that lie
// whole within its first 799 characters. False, and nothing changes, when there are none.
bool ReadChannels(PlayOrder& channels, std::string_view stored);

// The channels in use.
std::span<const int> ListedChannels(const PlayOrder& channels);

// The text of channels as it is stored; of many only as many as it may hold.
std::string StoredChannels(std::span<const int> channels);

// The first place whose channel is greater than `channel`; the end when there is none.
int InsertPosition(const PlayOrder& channels, int channel);

// Adds a channel at its place and makes it current; false when the list is full.
bool InsertChannel(PlayOrder& channels, int channel);

// Removes the entry at a position of the list; the current index stays.
void RemoveChannel(PlayOrder& channels, int position);

}  // namespace quorvex
