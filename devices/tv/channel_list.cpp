#include "devices/tv/channel_list.h"

#include <algorithm>
#include <cstdint>

#include "base/number_list.h"

namespace quorvex {

namespace {

std::string_view WholeNumbers(std::string_view text) {
  if (text.size() <= kLongestChannelText || text[kLongestChannelText] == ' ')
    return text.substr(0, kLongestChannelText);
  return text.substr(0, text.substr(0, kLongestChannelText).rfind(' ') + 1);  // nothing without a blank
}

}  // namespace

int LastChannelOfRange(int lowest, int highest) {
  constexpr auto kMost = static_cast<std::int64_t>(kMaxOrderLength);
  return static_cast<int>(std::min<std::int64_t>(highest, lowest + kMost - 1));
}

void SetChannelRange(PlayOrder& channels, int lowest, int highest) {
  const std::int64_t last = LastChannelOfRange(lowest, highest);
  channels.orderLength = 0;
  channels.orderIndex = 0;
  for (std::int64_t channel = lowest; channel <= last; ++channel)
    channels.playOrder[static_cast<std::size_t>(channels.orderLength++)] = static_cast<int>(channel);
}

bool ReadChannels(PlayOrder& channels, std::string_view stored) {
  const std::vector<int> numbers = ParseNumberList(WholeNumbers(stored), kMaxOrderLength);
  if (numbers.empty()) return false;
  channels.SetOrder(numbers);
  channels.orderIndex = 0;
  return true;
}

std::span<const int> ListedChannels(const PlayOrder& channels) {
  return {channels.playOrder.data(), static_cast<std::size_t>(channels.orderLength)};
}

std::string StoredChannels(std::span<const int> channels) {
  std::string text;
  for (const int channel : channels) {
    const std::string next = FormatNumberList({&channel, 1});
    if (text.size() + next.size() > kLongestChannelText) break;
    text += next;
  }
  return text;
}

int InsertPosition(const PlayOrder& channels, int channel) {
  const auto end = channels.playOrder.begin() + channels.orderLength;
  const auto greater =
      std::find_if(channels.playOrder.begin(), end, [channel](int entry) { return entry > channel; });
  return static_cast<int>(greater - channels.playOrder.begin());
}

bool InsertChannel(PlayOrder& channels, int channel) {
  if (channels.orderLength == static_cast<int>(kMaxOrderLength)) return false;
  const int position = InsertPosition(channels, channel);
  const auto at = channels.playOrder.begin() + position;
  const auto end = channels.playOrder.begin() + channels.orderLength;
  std::move_backward(at, end, end + 1);
  *at = channel;
  ++channels.orderLength;
  channels.orderIndex = position;
  return true;
}

void RemoveChannel(PlayOrder& channels, int position) {
  const auto at = channels.playOrder.begin() + position;
  std::move(at + 1, channels.playOrder.begin() + channels.orderLength, at);
  --channels.orderLength;
}

}  // namespace quorvex
