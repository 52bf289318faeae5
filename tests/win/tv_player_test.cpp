// The TV device on the virtual card, through the platform's own parts, with its picture on the screen.
#include "tests/support/card_graph.h"
#include "tests/support/message_box.h"
#include "tests/support/screen_marks.h"
#include "tests/support/tv_panel.h"

namespace quorvex {
namespace {

constexpr int kNoSignal = 255;

class TvPlayerTest : public TvPanelTest {
 protected:
  ~TvPlayerTest() override { CloseDevice(); }

  void Open(const std::string& config) const {
    stores.Write("quorvex.ini", config);
    Press(kFirstCard);
    ASSERT_NE(currentDevice, nullptr);
    ASSERT_NE(theVideoWindow, nullptr);
  }
  static ScreenMarks Marks() { return ReadScreenMarks(theVideoWindow->GetRendererWindow()); }
  static bool Shows(int input, int channel) {
    return PumpUntil([=] { return Marks() == ScreenMarks{input, channel}; }, 10000);
  }

  const PluggedCards cards;
};

// What the run put on the display and on the screen.
struct Followed {
  int channels = 0;
  int pictures = 0;  // that showed another channel than the one before
  int last = -1;
};
Followed followed;

TEST_F(TvPlayerTest, AutoTuneFindsTheStationsOfTheList) {
  const std::string film = std::string(QUORVEX_TEST_MEDIA) + "\\mpeg4_mp3.avi";
  const StationList list("antenna 3 THREE\r\nantenna 5 FIVE\r\nantenna 40 FILM | " + film +
                         "\r\nantenna 50 NOTHING | Z:\\none.avi\r\nantenna 69 LAST\r\ncable 8 EIGHT\r\n");
  Open("[TV]\r\nAntennaChannelList=2 3 \r\nCableChannelList=9 \r\nLastChannel=3\r\n");
  EXPECT_TRUE(Shows(0, 3));
  followed = {};
  static CardState* card = nullptr;
  card = cards.operator->();
  SetOnScreenText([](const std::string& text) {
    EXPECT_EQ(Number(kFirstNumber), std::stoi(text));
    EXPECT_EQ(card->channel, static_cast<std::uint32_t>(std::stoi(text))) << "the tuner is there";
    currentDevice->ShowOsdText(text);
    const int seen = Marks().channel;
    followed.channels += 1;
    followed.pictures += seen != followed.last ? 1 : 0;
    followed.last = seen;
  });
  Device().AutoTuneChannels(mainWindow, 1);
  ConnectPicture();
  EXPECT_EQ(followed.channels, 68);
  EXPECT_GE(followed.pictures, 5) << "the picture follows";
  EXPECT_EQ(Channels(), (std::vector{3, 5, 40, 69}));
  EXPECT_EQ(Stored("AntennaChannelList"), "3 5 40 69 ");
  EXPECT_EQ(Stored("CableChannelList"), "9 ");
  EXPECT_EQ(Number(kFirstNumber), 3);
  EXPECT_TRUE(Shows(0, 3));
  Press(kCommandUp);
  EXPECT_TRUE(Shows(0, 5));
}

TEST_F(TvPlayerTest, ACardThatIsGoneTakesItsPictureAlong) {
  Open("[TV]\r\nLastChannel=5\r\n");
  EXPECT_TRUE(Shows(0, 5));
  Press(kCommandVideoAdjustment);
  cards.PullOut(kCards[0]);
  EXPECT_TRUE(PumpUntil([] { return ShownText() == "The capture device is gone"; }));
  EXPECT_EQ(theVideoWindow, nullptr);
  ASSERT_NE(currentDevice, nullptr);
  for (const int command :
       std::initializer_list<int>{kCommandUp, kCommandVideoInput, kCommandVideoInput, kCommandVideoInput,
                                  kCommandClosedCaption, kCommandVideoAdjustment, kCommandIncrease,
                                  kCommandPlay, kCommandFullScreen, kCommandVideoAdjustment}) {
    Press(command);
    PumpFor(20);
    EXPECT_EQ(theVideoWindow, nullptr) << command;
  }
  EXPECT_FALSE(Device().Play(0, 0));
  ASSERT_TRUE(PlugIn(*cards.operator->(), kCards[0]));
  Press(kFirstCard);
  ASSERT_NE(theVideoWindow, nullptr);
  EXPECT_EQ(ShownText(), "");
  EXPECT_TRUE(Shows(kNoSignal, 6)) << "where it was";
  CDevice* const before = currentDevice.get();
  Press(kFirstCard);
  EXPECT_EQ(currentDevice.get(), before) << "it is shown";
}

struct BadCard {
  const char* name;
  CardState::Value CardState::*fault;
  std::uint32_t value;
  std::vector<std::string> boxes;
  const char* text;
  bool opens;
};

TEST_F(TvPlayerTest, ABadCardEndsWell) {
  const char* const refused = "The capture device does not take its format";
  const char* const noRate = "Quorvex: Error: Cannot set frame rate for preview";
  const BadCard bad[] = {
      {"GetFormat fails", &CardState::formatFault, 1, {}, refused, false},
      {"another kind of format", &CardState::formatFault, 2, {}, "The capture device has no picture", false},
      {"0 x 0", &CardState::formatFault, 3, {noRate}, refused, false},
      {"SetFormat fails", &CardState::refuseFormat, 1, {noRate}, refused, false},
      {"put_InputType fails", &CardState::refuseInput, 1, {"Quorvex: put_InputType"}, "", true},
      {"no crossbar", &CardState::noCrossbar, 1, {}, "", true},
      {"no captions", &CardState::noCaptions, 1, {"Quorvex: This graph cannot CC!"}, "", true},
      {"none", &CardState::slowFrames, 0, {}, "", true},
  };
  MessageBoxAnswerer boxes;
  for (const BadCard& one : bad) {
    const std::size_t before = boxes.Answered().size();
    stores.Write("quorvex.ini", "");
    cards.operator->()->*one.fault = one.value;
    Press(kFirstCard);
    cards.operator->()->*one.fault = 0;
    const std::vector<std::string> told = boxes.Answered();
    EXPECT_EQ(std::vector(told.begin() + static_cast<std::ptrdiff_t>(before), told.end()), one.boxes)
        << one.name;
    EXPECT_EQ(ShownText(), one.text) << one.name;
    EXPECT_EQ(currentDevice != nullptr, one.opens) << one.name;
    EXPECT_EQ(theVideoWindow != nullptr, one.opens) << one.name;
    for (const int command :
         std::initializer_list<int>{kCommandUp, kCommandClosedCaption, kCommandVideoInput, kCommandVideoInput,
                                    kCommandVideoInput, kCommandDown, kCommandCloseDevice}) {
      Press(command);
      PumpFor(10);
    }
    EXPECT_EQ(theVideoWindow, nullptr) << one.name;
  }
  for (const int index : {-1, 19}) {
    EXPECT_FALSE(SwitchToTv(index));
    EXPECT_EQ(boxes.Answered().back(), "Quorvex: Capture device was not detected.");
  }
}

TEST_F(TvPlayerTest, ACardThatNeverSendsAPictureTakesItsKeysAndCanBeClosed) {
  cards->slowFrames = 0xFFFFFFFF;
  const ULONGLONG begun = ::GetTickCount64();
  Open("[TV]\r\nLastChannel=5\r\n");
  for (const int command :
       {kCommandUp, kCommandVideoInput, kCommandPause, kCommandFullScreen, kCommandFullScreen}) {
    Press(command);
    PumpFor(50);
  }
  Press(kCommandCloseDevice);
  EXPECT_EQ(currentDevice, nullptr);
  EXPECT_LT(::GetTickCount64() - begun, 20'000U);
  cards->slowFrames = 0;
  Open("[TV]\r\nLastChannel=5\r\n");
  EXPECT_TRUE(Shows(0, 5));
}

TEST_F(TvPlayerTest, ARouteThatIsRefusedIsSaid) {
  Open("[TV]\r\nLastChannel=5\r\n");
  cards->refuseRoute = 1;
  Press(kCommandVideoInput);
  EXPECT_EQ(ShownText(), "Cannot switch to VIDEO 1");
  EXPECT_TRUE(Shows(0, 5));
  cards->refuseRoute = 0;
  Press(kCommandVideoInput);
  EXPECT_EQ(ShownText(), "");
  EXPECT_TRUE(PumpUntil([] { return Marks().input == 2; }));
}

}  // namespace
}  // namespace quorvex
