// Byte pairs of line 21. The first byte is the channel ('1' to '4' captions, '5' to '8' text); then come
// pairs, their bytes with bit 7 for a wrong parity. A pair that begins with 0xFF is sent in the other field.
#include <bit>

#include "platform/common/line21_decoder.h"
#include "tests/fuzz/fuzz_target.h"

namespace quorvex {
namespace {

constexpr std::uint8_t kOtherField = 0xFF;
constexpr std::uint8_t kFirst = 0x14;  // of the commands

std::uint8_t WithParity(int byte) {
  const auto code = static_cast<std::uint8_t>(byte & 0x7F);
  const bool isWrong = (byte & 0x80) != 0;
  const bool isOdd = std::popcount(code) % 2 == 1;
  return isOdd == isWrong ? static_cast<std::uint8_t>(code | 0x80) : code;
}

class Sender {
 public:
  explicit Sender(Line21Channel channel) : number(static_cast<int>(channel) - 1) {
    decoder.SetChannel(channel);
  }

  // Of a field's second channel codes have bit 3.
  [[nodiscard]] int CodeBit() const { return number % 2 == 1 ? 8 : 0; }

  void Send(int first, int second, bool toOtherField = false) {
    const CaptionScreen before = decoder.Shown();
    const int field = (number / 2 % 2 == 0) != toOtherField ? 1 : 2;
    const bool changed = decoder.Feed(field, WithParity(first), WithParity(second));
    Require(changed == (decoder.Shown() != before), "a change is told");
    Require(!changed || !toOtherField, "the other field shows nothing");
  }

  void SendAll(const std::uint8_t* bytes, std::size_t size) {
    for (std::size_t at = 0; at + 1 < size; at += 2) Send(bytes[at], bytes[at + 1], bytes[at] == kOtherField);
  }

  Line21Decoder decoder;

 private:
  int number;
};

void CheckScreen(const CaptionScreen& screen) {
  for (const CaptionRow& row : screen.cells) {
    for (const CaptionCell& cell : row) {
      Require(cell.character == 0 || (cell.character >= U' ' && cell.character < 0x10000),
              "a cell holds a character or nothing");
      Require(cell.color <= CaptionColor::kBlack, "its colour is one");
    }
  }
}

// Whatever came before, what is sent anew from here is shown: "HI", and nothing else.
void CheckThatANewScreenIsShown(Sender sender, bool isText) {
  constexpr int kResumeLoading = 0x20;
  constexpr int kTextRestart = 0x2A;
  constexpr int kEraseNonDisplayed = 0x2E;
  constexpr int kEndOfCaption = 0x2F;
  const int first = kFirst | sender.CodeBit();
  sender.Send(0, 0);  // whatever waited for its repetition
  if (isText) {
    sender.Send(first, kTextRestart);
    sender.Send('H', 'I');
  } else {
    sender.Send(first, kResumeLoading);
    sender.Send(first, kEraseNonDisplayed);
    sender.Send(first, 0x60);  // the beginning of the last row
    sender.Send('H', 'I');
    sender.Send(first, kEndOfCaption);
  }
  CaptionScreen expected;
  CaptionRow& row = expected.cells[isText ? 0 : CaptionScreen::kRows - 1];
  row[0].character = U'H';
  row[1].character = U'I';
  Require(sender.decoder.Shown() == expected, "a new screen is shown as it was sent");
}

void Try(const std::uint8_t* bytes, std::size_t size) {
  constexpr int kChannels = 8;
  if (size == 0) return;
  const int number = (bytes[0] - '1') & (kChannels - 1);
  const auto channel = static_cast<Line21Channel>(1 + number);
  Sender sender(channel);
  sender.SendAll(bytes + 1, size - 1);
  CheckScreen(sender.decoder.Shown());
  CheckThatANewScreenIsShown(sender, channel >= Line21Channel::kText1);
  sender.decoder.Clear();
  Require(sender.decoder.Shown() == CaptionScreen(), "nothing is shown after a jump");
  sender.SendAll(bytes + 1, size - 1);
  Sender fresh(channel);
  fresh.SendAll(bytes + 1, size - 1);
  Require(sender.decoder.Shown() == fresh.decoder.Shown(), "nothing is left over after a jump");
}

}  // namespace
}  // namespace quorvex

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  quorvex::Try(bytes, size);
  return 0;
}
