// The TV device on the virtual card, through the platform's own parts, with its picture on the screen.
#include "tests/support/card_graph.h"
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

TEST_F(TvPlayerTest, ACardThatIsClosedLeavesNothingOfThePlatformsParts) {
  // Nobody has an object of the module, or it has gone already.
  const auto isUnused = [] {
    const HMODULE module = ::GetModuleHandleA("qvtv.dll");
    if (module == nullptr) return true;
    using Function = HRESULT (*)();
    // By way of void*, for the platform's own pointer type stands for any function.
    void* const function = reinterpret_cast<void*>(::GetProcAddress(module, "DllCanUnloadNow"));
    return reinterpret_cast<Function>(function)() == S_OK;
  };
  Open("[TV]\r\nClosedCaption=1\r\n");
  EXPECT_TRUE(Shows(0, 2));
  EXPECT_FALSE(isUnused());
  Press(kCommandCloseDevice);
  EXPECT_TRUE(isUnused());
}

}  // namespace
}  // namespace quorvex
