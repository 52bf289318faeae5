#include "platform/common/line21_decoder.h"

#include <gtest/gtest.h>

#include "tests/support/line21_script.h"

namespace quorvex {
namespace {

void FeedAll(Line21Decoder& decoder, std::string_view script, int field = 1, int number = 1) {
  for (const auto& [first, second] : Line21Script(script, number).pairs) decoder.Feed(field, first, second);
}

std::string Decoded(std::string_view script, Line21Channel channel = Line21Channel::kCaption1) {
  Line21Decoder decoder;
  decoder.SetChannel(channel);
  FeedAll(decoder, script);
  return ScreenText(decoder.Shown());
}

struct Case {
  const char* what;
  std::string script;
  std::string screen;
};

void CheckAll(std::initializer_list<Case> cases, Line21Channel channel = Line21Channel::kCaption1) {
  for (const Case& one : cases) EXPECT_EQ(Decoded(one.script, channel), one.screen) << one.what;
}

const std::string k32 = "ABCDEFGHIJKLMNOPQRSTUVWXYZ012345";

TEST(Line21Decoder, PopOnCaptionsAreLoadedUnseenAndShownAtOnce) {
  CheckAll({
      {"at their end", "{RCL}{ENM}{14:4}HELLO{15:8}YOU{EOC}", "14:4 HELLO|15:8 YOU"},
      {"the next one replaces them", "{RCL}{15:0}ONE{EOC}{RCL}{ENM}{1:0}TWO{EOC}", "1:0 TWO"},
      {"what was shown is loaded again without being erased", "{RCL}{15:0}ONE{EOC}{15:0}TWO{EOC}{EOC}",
       "15:0 ONE"},
      {"erasing what is not shown leaves what is", "{RCL}{15:0}ONE{EOC}{ENM}", "15:0 ONE"},
      {"a carriage return does nothing", "{RCL}{15:0}ON{CR}E{EOC}", "15:0 ONE"},
      {"loading goes on while text comes between", "{RCL}{15:0}ON{TR}OTHER{RCL}E{EOC}", "15:0 ONE"},
      {"no style, no captions", "{15:0}HELLO{EOC}", ""},
  });
}

TEST(Line21Decoder, RollUpCaptionsRollUp) {
  CheckAll({
      {"two rows", "{RU2}{CR}ONE{CR}TWO{CR}THREE", "14:0 TWO|15:0 THREE"},
      {"four rows", "{RU4}{CR}1{CR}2{CR}3{CR}4{CR}5", "12:0 2|13:0 3|14:0 4|15:0 5"},
      {"each announced again", "{RU2}{CR}{15:0}ONE{RU2}{CR}{15:4}TWO", "14:0 ONE|15:4 TWO"},
      {"moved as a whole", "{RU2}{CR}ONE{CR}TWO{3:4}MORE", "2:0 ONE|3:0 TWO_MORE"},
      {"no higher than they fit", "{RU3}{CR}1{CR}2{CR}3{1:0}", "1:0 1|2:0 2|3:0 3"},
      {"fewer rows from the next one on", "{RU4}{CR}1{CR}2{CR}3{CR}4{RU2}{CR}5", "14:0 4|15:0 5"},
      {"writing goes on after a break", "{RU2}{CR}ON{TR}OTHER{RU2}E", "15:0 ONE"},
      {"they take away captions of another style", "{RCL}{1:0}ONE{EOC}{RU2}{CR}TWO", "15:0 TWO"},
      {"erased", "{RU2}{CR}ONE{CR}TWO{EDM}THREE", "15:3 THREE"},
  });
}

TEST(Line21Decoder, PaintOnCaptionsAppearAsTheyCome) {
  CheckAll({
      {"at their place", "{RDC}{2:8}PAIN", "2:8 PAIN"},
      {"over what is shown", "{RCL}{15:0}SHOWN{EOC}{RDC}{15:0}PA", "15:0 PAOWN"},
      {"rows that lie apart", "{RDC}{1:28}A{11:0}B{12:0}C", "1:28 A|11:0 B|12:0 C"},
      {"a carriage return does nothing", "{RDC}{2:0}A{CR}B", "2:0 AB"},
  });
  for (int row = 1; row <= CaptionScreen::kRows; ++row) {
    const std::string number = std::to_string(row);
    const std::string script = "{RDC}{" + number + ":12}X";
    EXPECT_EQ(Decoded(script), number + ":12 X");
    Line21Decoder second;
    second.SetChannel(Line21Channel::kCaption2);
    FeedAll(second, script, 1, 2);
    EXPECT_EQ(ScreenText(second.Shown()), number + ":12 X") << "in the second channel";
  }
}

TEST(Line21Decoder, TheCursorStaysInItsRow) {
  CheckAll({
      {"the last column is written again", "{RDC}{1:0}" + k32 + "67", "1:0 " + k32.substr(0, 31) + "7"},
      {"tabs leave what is there", "{RDC}{1:0}ABCDE{1:0}{TO2}X{TO1}Y", "1:0 ABXDY"},
      {"tabs stop at the last column", "{RDC}{1:28}{TO3}{TO3}XY", "1:31 Y"},
      {"a step back erases", "{RDC}{1:0}ABC{BS}{BS}D", "1:0 AD"},
      {"none from the first column", "{RDC}{1:0}{BS}AB", "1:0 AB"},
      {"from a full row to the last column but one", "{RDC}{1:0}" + k32 + "{BS}x",
       "1:0 " + k32.substr(0, 30) + "x"},
      {"erased to the end", "{RDC}{1:0}ABCDEFGH{1:4}{DER}", "1:0 ABCD"},
      {"flashing takes a place", "{RDC}{1:0}A{FON}B", "1:0 A B"},
  });
}

TEST(Line21Decoder, CharactersAreThoseOfTheStandard) {
  CheckAll({
      {"instead of ASCII", "{RDC}{1:0}'*\\^_`{!0x7B7C}{!0x7D7E}{!0x7F20}X", "1:0 ’áéíóúç÷Ññ█ X"},
      {"special ones", "{RDC}{1:0}{0x1130}{0x1137}{0x1138}{0x113F}", "1:0 ®♪àû"},
      {"a special space shows the picture", "{RDC}{1:0}AB{1:0}{0x1139}", "1:1 B"},
      {"extended ones replace the substitute before them", "{RDC}{1:0}xA{0x1220}B", "1:0 xÁB"},
      {"also in the last column", "{RDC}{1:0}" + k32 + "{0x1333}", "1:0 " + k32.substr(0, 31) + "ö"},
      {"of both sets", "{RDC}{1:0}.{0x123F}.{0x1320}.{0x133F}.{0x1334}", "1:0 »Ã┘ß"},
  });
}

TEST(Line21Decoder, AttributesHoldUntilTheNext) {
  Line21Decoder decoder;
  decoder.SetChannel(Line21Channel::kCaption1);
  FeedAll(decoder, "{RU2}{CR}{15 cyan}G{CR}H");
  const auto cell = [&](int row, int column) {
    return decoder.Shown().cells[static_cast<std::size_t>(row - 1)][static_cast<std::size_t>(column)];
  };
  EXPECT_EQ(cell(14, 0), (CaptionCell{U'G', CaptionColor::kCyan, false, false}));
  EXPECT_EQ(cell(15, 0), (CaptionCell{U'H', CaptionColor::kWhite, false, false}));
  decoder.Clear();
  FeedAll(decoder, "{RDC}{1 green}A{italic}B{red u}C{1:16u}D{2 italic}E{3:0}F{0x172E}G");
  const struct {
    int row, column;
    CaptionCell cell;
  } cases[]{
      {1, 0, {U'A', CaptionColor::kGreen, false, false}}, {1, 1, {U' ', CaptionColor::kGreen, true, false}},
      {1, 2, {U'B', CaptionColor::kGreen, true, false}},  {1, 3, {U' ', CaptionColor::kRed, false, false}},
      {1, 4, {U'C', CaptionColor::kRed, false, true}},    {1, 16, {U'D', CaptionColor::kWhite, false, true}},
      {2, 0, {U'E', CaptionColor::kWhite, true, false}},  {3, 0, {U' ', CaptionColor::kBlack, false, false}},
      {3, 1, {U'G', CaptionColor::kBlack, false, false}},
  };
  for (const auto& one : cases)
    EXPECT_EQ(cell(one.row, one.column), one.cell) << one.row << ' ' << one.column;
}

TEST(Line21Decoder, CodesAreSentTwiceAndCountOnce) {
  CheckAll({
      {"twice", "{RU2}{CR}A{CR}B", "14:0 A|15:0 B"},
      {"once", "{!RU2}{!CR}A{!CR}B", "14:0 A|15:0 B"},
      {"three times", "{RU2}{CR}A{CR}{!CR}B", "15:0 B"},
      {"twice, each twice", "{RU2}{CR}A{CR}{CR}B", "15:0 B"},
      {"apart", "{RU2}{CR}A{!CR}{~}{!CR}B", "15:0 B"},
      {"special characters too", "{RDC}{1:0}{0x1137}{0x1137}{!0x1137}", "1:0 ♪♪♪"},
  });
}

TEST(Line21Decoder, DamageIsSeenOrMadeGoodByTheRepetition) {
  const auto decoded = [](std::vector<Line21Pair> pairs) {
    Line21Decoder decoder;
    decoder.SetChannel(Line21Channel::kCaption1);
    FeedAll(decoder, "{RU2}{CR}A");
    for (const auto& [first, second] : pairs) decoder.Feed(1, first, second);
    FeedAll(decoder, "B");
    return ScreenText(decoder.Shown());
  };
  const Line21Pair carriageReturn{WithParity(0x14), WithParity(0x2D)};
  const Line21Pair badFirst{WithParity(0x14) ^ 0x80, WithParity(0x2D)};
  const Line21Pair badSecond{WithParity(0x14), WithParity(0x2D) ^ 0x80};
  EXPECT_EQ(decoded({{WithParity('X') ^ 0x80, WithParity('Y')}}), "15:0 A█YB");
  EXPECT_EQ(decoded({{WithParity('X'), WithParity('Y') ^ 0x80}}), "15:0 AX█B");
  EXPECT_EQ(decoded({{0, 0}, {WithParity('X'), 0}}), "15:0 AXB") << "nothing, without parity";
  EXPECT_EQ(decoded({badSecond, carriageReturn}), "14:0 A|15:0 B") << "the second one counts";
  EXPECT_EQ(decoded({carriageReturn, badFirst}), "14:0 A|15:0 B") << "the repetition is recognised";
  EXPECT_EQ(decoded({carriageReturn, badSecond}), "14:0 A|15:0 B");
}

TEST(Line21Decoder, TextFillsTheScreenFromTheTopAndThenRolls) {
  std::string full = "{TR}";
  for (int line = 1; line <= 15; ++line)
    full += (line > 1 ? "{CR}" : "") + std::string(1, static_cast<char>('a' + line - 1));
  CheckAll(
      {
          {"from the top", "{TR}HELLO{CR}YOU", "1:0 HELLO|2:0 YOU"},
          {"begun anew", "{TR}HELLO{CR}YOU{TR}X", "1:0 X"},
          {"resumed", "{TR}HE{RCL}{15:0}CAPTION{EOC}{RTD}LLO", "1:0 HELLO"},
          {"resumed from nothing", "{RTD}HI", "1:0 HI"},
          {"captions do not count", "{TR}A{RU2}{CR}CAPTION{EDM}", "1:0 A"},
          {"a row is not chosen, a column is", "{TR}{9:8}HELLO", "1:8 HELLO"},
          {"full", full,
           "1:0 a|2:0 b|3:0 c|4:0 d|5:0 e|6:0 f|7:0 g|8:0 h|9:0 i|10:0 j|11:0 k|12:0 l|13:0 m|14:0 n|15:0 o"},
          {"rolled", full + "{CR}p",
           "1:0 b|2:0 c|3:0 d|4:0 e|5:0 f|6:0 g|7:0 h|8:0 i|9:0 j|10:0 k|11:0 l|12:0 m|13:0 n|14:0 o|15:0 p"},
          {"no text, no text", "HELLO{CR}", ""},
      },
      Line21Channel::kText1);
}

TEST(Line21Decoder, EveryChannelIsItsOwn) {
  using enum Line21Channel;
  struct {
    Line21Channel channel;
    const char* screen;
  } const cases[]{{kNone, ""},
                  {kCaption1, "15:0 C1more"},
                  {kCaption2, "14:0 C2"},
                  {kCaption3, "15:0 C3"},
                  {kCaption4, "13:0 C4"},
                  {kText1, "1:0 T1 on"},
                  {kText2, "1:0 T2"},
                  {kText3, "1:0 T3"},
                  {kText4, "1:0 T4"}};
  for (const auto& [channel, screen] : cases) {
    Line21Decoder decoder;
    decoder.SetChannel(channel);
    const struct {
      const char* script;
      int field, number;
    } parts[]{{"{RU2}{CR}C1", 1, 1},
              {"{RU2}{CR}{14:0}C2", 1, 2},
              {"{0x1525}{0x152D}C3", 2, 1},
              {"{RU2}{CR}{13:0}C4", 2, 2},
              {"{TR}T1", 1, 1},
              {"{TR}T2", 1, 2},
              {"{TR}T3", 2, 1},
              {"{TR}T4", 2, 2},
              {"{RTD} on", 1, 1},
              {"{RU2}more", 1, 1},
              {"{!0x0103}A NAME{!0x0F1D}LOST", 2, 1}};
    for (const auto& part : parts) FeedAll(decoder, part.script, part.field, part.number);
    EXPECT_EQ(ScreenText(decoder.Shown()), screen) << static_cast<int>(channel);
  }
}

TEST(Line21Decoder, BeginsAnewAfterAJumpAndInAnotherChannel) {
  Line21Decoder decoder;
  decoder.SetChannel(Line21Channel::kCaption1);
  FeedAll(decoder, "{RU2}{CR}ONE");
  decoder.SetChannel(Line21Channel::kCaption1);
  EXPECT_EQ(ScreenText(decoder.Shown()), "15:0 ONE") << "the same channel goes on";
  decoder.Clear();
  FeedAll(decoder, "E{EOC}");
  EXPECT_EQ(ScreenText(decoder.Shown()), "");
  EXPECT_EQ(decoder.Channel(), Line21Channel::kCaption1);
  FeedAll(decoder, "{RU2}{CR}TWO");
  decoder.SetChannel(Line21Channel::kText1);
  EXPECT_EQ(ScreenText(decoder.Shown()), "");
}

}  // namespace
}  // namespace quorvex
