// Lists of numbers, as play lists of discs and channels are stored.
#include "base/number_list.h"

#include "devices/tv/channel_list.h"
#include "tests/fuzz/fuzz_target.h"

namespace quorvex {
namespace {

constexpr std::size_t kFew = 3;

void Try(std::string_view text) {
  for (const std::size_t limit : {std::size_t{0}, kFew, kMaxOrderLength}) {
    const std::vector<int> numbers = ParseNumberList(text, limit);
    Require(numbers.size() <= limit, "no more numbers than asked for");
    Require(std::all_of(numbers.begin(), numbers.end(), [](int number) { return number > 0; }),
            "numbers are above 0");
    Require(ParseNumberList(FormatNumberList(numbers), limit) == numbers, "what is written is read again");
  }

  PlayOrder channels;
  if (!ReadChannels(channels, text)) return;
  const std::vector<int> listed(ListedChannels(channels).begin(), ListedChannels(channels).end());
  Require(!listed.empty() && listed.front() == channels.CurrentEntry(), "the first channel is current");
  const std::string stored = StoredChannels(listed);
  Require(stored.size() <= kLongestChannelText, "channels are stored as far as they may be");
  PlayOrder again;
  Require(ReadChannels(again, stored), "stored channels are read again");
  const auto kept = ListedChannels(again);
  Require(std::equal(kept.begin(), kept.end(), listed.begin(), listed.begin() + again.orderLength),
          "and are the first of them");
  if (InsertChannel(channels, listed.back())) {
    Require(channels.CurrentEntry() == listed.back(), "a channel that is inserted is current");
    RemoveChannel(channels, channels.orderIndex);
    const auto left = ListedChannels(channels);
    Require(std::equal(left.begin(), left.end(), listed.begin(), listed.end()), "and can be taken out again");
  }
}

}  // namespace
}  // namespace quorvex

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  quorvex::Try(quorvex::TextOf(bytes, size));
  return 0;
}
