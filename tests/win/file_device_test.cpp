#include "devices/media/file_device.h"

#include <algorithm>

#include "shell/device_switch.h"
#include "tests/support/noted_boxes.h"
#include "tests/support/panel.h"
#include "video/video_window.h"

namespace quorvex {
namespace {

constexpr char kUnplayable[] = "\r\n\nCannot playback file.  Unsupported file format.";

// A sound file of silence: 8 bits, one channel, 8,000 samples a second.
std::string Silence(int milliseconds) {
  const auto size = static_cast<std::uint32_t>(8 * milliseconds);
  std::string bytes("RIFF____WAVEfmt \x10\0\0\0\x01\0\x01\0\x40\x1F\0\0\x40\x1F\0\0\x01\0\x08\0data____", 44);
  const auto put = [&](std::size_t place, std::uint32_t value) {
    for (std::size_t i = 0; i < 4; ++i) bytes[place + i] = static_cast<char>(value >> (8 * i));
  };
  put(4, 36 + size);
  put(40, size);
  return bytes + std::string(size, '\x80');
}

std::string Media(const char* name) { return std::string(QUORVEX_TEST_MEDIA) + '\\' + name; }

class FileDeviceTest : public PanelTest {
 protected:
  FileDeviceTest() {
    for (const char* name : {"1.wav", "2.wav", "3.wav"}) stores.Write(name, Silence(400));
    stores.Write("long.wav", Silence(10'000));
  }
  ~FileDeviceTest() override {
    currentDevice.reset();
    DeleteVideoWindow();
    fullScreen = false;
    // The sound device is closed on threads of its own; a process that ends meanwhile may hang in it.
    ::Sleep(250);
  }

  // Plays these files as a play list.
  bool Load(const std::vector<std::string>& paths) {
    std::string album = "[Mine]\r\nTracks=" + std::to_string(paths.size()) + "\r\n";
    for (std::size_t i = 0; i < paths.size(); ++i) album += std::to_string(i + 1) + "=" + paths[i] + "\r\n";
    stores.Write("mfiles.abm", album);
    currentPlaylist = "Mine";
    return SwitchToFile();
  }

  static std::string Place() {
    return std::to_string(Number(kFirstNumber)) + " of " + std::to_string(Number(kSecondNumber));
  }
  // Tenths of a second on the display.
  static int Tenths() { return (Shown(3) * 60 + Shown(4) * 10 + Shown(5)) * 10 + Shown(kTenths); }
  static PlayState State() { return currentDevice ? currentDevice->playState : PlayState::kStopped; }
  static HWND Frame() { return ::FindWindowA("PVideo", nullptr); }
  static bool Shows(const std::string& place) {
    return PumpUntil([&] { return Place() == place; }, 5000);
  }
};

TEST_F(FileDeviceTest, WhatFollowsTheLastFileIsTheRepeatModesChoice) {
  ASSERT_TRUE(Load({stores.Path("1.wav"), stores.Path("2.wav")}));
  EXPECT_EQ(Place(), "1 of 2");
  EXPECT_EQ(ShownText(), "1.wav");
  EXPECT_EQ(Frame(), nullptr);
  ASSERT_TRUE(Shows("2 of 2"));
  ASSERT_TRUE(PumpUntil([] { return State() == PlayState::kStopped; }));
  EXPECT_EQ(Place(), "2 of 2") << "the device stays, at the beginning of its last file";
  PumpFor(200);
  EXPECT_EQ(Tenths(), 0);

  currentDevice->repeatMode = RepeatMode::kAll;
  currentDevice->Play(0, 0);
  ASSERT_TRUE(Shows("1 of 2"));
  currentDevice->repeatMode = RepeatMode::kOne;
  PumpFor(1500);
  EXPECT_EQ(Place(), "1 of 2");
  EXPECT_EQ(State(), PlayState::kPlaying);
  currentDevice->PreviousItem();
  EXPECT_EQ(Place(), "2 of 2");
  currentDevice->NextItem();
  EXPECT_EQ(Place(), "1 of 2");
}

TEST_F(FileDeviceTest, RandomPlaysEveryFileOnceAndEndingItGoesOnFromTheFileThatPlays) {
  const std::string path = stores.Path("long.wav");
  ASSERT_TRUE(Load(std::vector<std::string>(20, path)));
  currentDevice->ToggleRandom();
  std::vector<std::string> places;
  for (int i = 0; i < 20; ++i) {
    places.push_back(Place());
    currentDevice->NextItem();
  }
  const std::vector<std::string> asPlayed = places;
  std::sort(places.begin(), places.end());
  EXPECT_EQ(std::unique(places.begin(), places.end()), places.end());
  EXPECT_NE(asPlayed, places) << "an order that is no order";
  const int entry = Number(kFirstNumber);
  PumpFor(300);
  const int tenths = Tenths();
  currentDevice->ToggleRandom();
  PumpFor(300);
  EXPECT_GT(Tenths(), tenths) << "goes on undisturbed";
  currentDevice->NextItem();
  EXPECT_EQ(Number(kFirstNumber), entry % 20 + 1);
}

TEST_F(FileDeviceTest, SoundJumpsWhenAScanEndsAndPicturesFollowIt) {
  ASSERT_TRUE(Load({stores.Path("long.wav"), Media("mpeg4_mp3.avi")}));
  for (int i = 0; i < 4; ++i) currentDevice->FastForward();
  const int scanned = Tenths();
  EXPECT_GE(scanned, 40);
  EXPECT_LT(scanned, 50);
  PumpFor(300);
  EXPECT_EQ(Tenths(), scanned) << "the place that is scanned to stands on the display";
  currentDevice->EndScan();
  ASSERT_TRUE(PumpUntil([&] { return Tenths() > scanned; }));
  EXPECT_LT(Tenths(), scanned + 15);
  for (int i = 0; i < 10; ++i) currentDevice->FastForward();
  EXPECT_LT(Tenths(), 60) << "past the end it begins anew";
  while (Tenths() >= 10) currentDevice->Rewind();
  currentDevice->Rewind();
  EXPECT_EQ(Tenths(), 100) << "and before the beginning at the end";
  currentDevice->EndScan();

  currentDevice->NextItem();
  ASSERT_NE(Frame(), nullptr);
  currentDevice->Pause();
  PumpFor(200);
  const int paused = Tenths();
  currentDevice->FastForward();
  currentDevice->EndScan();
  currentDevice->Play(0, 0);
  ASSERT_TRUE(PumpUntil([&] { return Tenths() >= paused + 11; }));
  EXPECT_LT(Tenths(), paused + 25);
}

TEST_F(FileDeviceTest, AnEndThatAScanPassesIsNone) {
  ASSERT_TRUE(Load({Media("mpeg4_mp3.avi"), stores.Path("long.wav")}));
  ASSERT_TRUE(PumpUntil([] { return Tenths() > 2; }));
  currentDevice->Rewind();
  ASSERT_GT(Tenths(), 15) << "round to the film's end";
  PumpFor(500);
  EXPECT_EQ(Place(), "1 of 2");
  currentDevice->Rewind();
  currentDevice->EndScan();
  EXPECT_EQ(Place(), "1 of 2");
  EXPECT_EQ(State(), PlayState::kPlaying);
  while (Tenths() > 10) currentDevice->Rewind();
  currentDevice->Rewind();
  PumpFor(500);
  currentDevice->EndScan();
  EXPECT_TRUE(Shows("2 of 2")) << "where the key is let go it is one";
}

TEST_F(FileDeviceTest, AListWithoutEntriesSaysSoAndHasNoNextOne) {
  NotedBoxes boxes;
  EXPECT_FALSE(Load({}));
  EXPECT_EQ(ShownText(), "The playlist is empty");
  for (const int key : {kCommandNext, kCommandPrevious, kCommandRandom}) Press(key);
  EXPECT_NE(currentDevice, nullptr);
  EXPECT_TRUE(boxes.Take().empty());
}

TEST_F(FileDeviceTest, TheVideoWindowComesAndGoesWithThePicture) {
  ASSERT_TRUE(Load({Media("mpeg1_mp2.mpg"), stores.Path("long.wav"), Media("picture_only.avi")}));
  const HWND first = Frame();
  ASSERT_NE(first, nullptr);
  theVideoWindow->ToggleFullScreen();
  EXPECT_TRUE(fullScreen);
  currentDevice->NextItem();
  EXPECT_FALSE(fullScreen);
  EXPECT_EQ(Frame(), nullptr);
  currentDevice->NextItem();
  ASSERT_NE(Frame(), nullptr);
  // Closed by its user the film goes on without it, and the next one has a window again.
  ::SendMessageA(Frame(), WM_CLOSE, 0, 0);
  EXPECT_EQ(Frame(), nullptr);
  EXPECT_EQ(State(), PlayState::kPlaying);
  currentDevice->NextItem();
  EXPECT_NE(Frame(), nullptr);
  EXPECT_FALSE(Load({})) << "a list without a file";
  EXPECT_EQ(Frame(), nullptr);
}

TEST_F(FileDeviceTest, TheListThatWasOpenedPlaysOnWhateverIsMarkedAndRenamedSince) {
  ASSERT_TRUE(Load({stores.Path("long.wav"), stores.Path("1.wav"), stores.Path("2.wav")}));
  for (const char* marked : {"", "Other"}) {
    currentPlaylist = marked;
    ASSERT_TRUE(currentDevice->NextItem());
  }
  EXPECT_EQ(ShownText(), "2.wav");
  stores.Write("mfiles.abm", "[Renamed]\r\nTracks=3\r\n1=" + stores.Path("3.wav") + "\r\n");
  currentPlaylist = "Renamed";
  ASSERT_TRUE(currentDevice->NextItem());
  EXPECT_EQ(ShownText(), "3.wav");
}

TEST_F(FileDeviceTest, WithoutAutoPlayTheFirstFileWaits) {
  stores.Write("quorvex.ini", "[MEDIA FILE]\r\nAutoPlay=0\r\n");
  ASSERT_TRUE(Load({Media("mpeg1_mp2.mpg"), stores.Path("1.wav")}));
  PumpFor(400);
  EXPECT_EQ(State(), PlayState::kPaused);
  EXPECT_EQ(Tenths(), 0);
  EXPECT_NE(Frame(), nullptr);
  currentDevice->Play(0, 0);
  EXPECT_TRUE(PumpUntil([] { return Tenths() > 2; }));
  currentDevice->NextItem();
  EXPECT_EQ(State(), PlayState::kPlaying);
}

TEST_F(FileDeviceTest, OfALongListTheFirstThousandArePlayed) {
  ASSERT_TRUE(Load(std::vector<std::string>(1200, stores.Path("long.wav"))));
  EXPECT_EQ(ShownText(), "The first 1000 of 1200 files");
  currentDevice->PreviousItem();
  EXPECT_EQ(currentDevice->itemCount, 1000);
  EXPECT_EQ(ShownText(), "long.wav");
  EXPECT_FALSE(Load({}));
}

TEST_F(FileDeviceTest, AFileThatCannotBePlayedIsToldAndLeavesNoDevice) {
  stores.Write("text.avi", "this is no film at all");
  stores.Write("empty.mp3", "");
  std::filesystem::create_directories(stores.Path("folder"));
  for (const std::string& path :
       {stores.Path("text.avi"), stores.Path("empty.mp3"), stores.Path("folder"), stores.Path("missing.wav"),
        std::string(), stores.Path(std::string(259 - stores.Path("").size(), 'x')), std::string(259, 'y')}) {
    NotedBoxes user;
    ASSERT_TRUE(Load({Media("mpeg1_mp2.mpg"), path}));
    currentDevice->randomOn = true;
    currentDevice->repeatMode = RepeatMode::kAll;
    EXPECT_FALSE(currentDevice->NextItem());
    EXPECT_EQ(user.Take(), std::vector<std::string>{"Quorvex: " + path + kUnplayable});
    EXPECT_EQ(currentDevice, nullptr);
    EXPECT_EQ(Frame(), nullptr);
    EXPECT_EQ(Shown(kIdleLamp), 1);
    EXPECT_EQ(Shown(kRandomLamp) + Shown(kRepeatLamp) + Shown(kRepeatAllLamp), 0);
    EXPECT_FALSE(IsLit(kCommandRandom) || IsLit(kCommandRepeat));
    EXPECT_EQ(ShownText(), "");
  }
}

TEST_F(FileDeviceTest, AFileThatIsDeletedWhileItPlaysEndsWellAndSoDoesItsList) {
  // As another machine or another system does it: nobody asks the player.
  stores.Write("doomed.wav", Silence(1500));
  ASSERT_TRUE(Load({stores.Path("doomed.wav"), stores.Path("1.wav")}));
  ASSERT_TRUE(PumpUntil([] { return Tenths() > 2; }));
  const std::string unixPath = stores.Path("doomed.wav");
  ::DeleteFileA(unixPath.c_str());
  EXPECT_TRUE(Shows("2 of 2"));
  NotedBoxes user;
  std::filesystem::remove(unixPath);
  EXPECT_EQ(currentDevice->PreviousItem(), std::filesystem::exists(unixPath));
}

}  // namespace
}  // namespace quorvex
