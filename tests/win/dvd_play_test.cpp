// DVD-Video discs, played through the platform's DVD graph builder as any program plays them: pictures and
// sound in their times, menus, stills, jumps, streams, captions, what the graph tells, and how it ends.
#include <gtest/gtest.h>

#include <dvdevcod.h>

#include <cmath>
#include <cstdlib>

#include "tests/support/com_test.h"
#include "tests/support/dvd_graph.h"

namespace quorvex {
namespace {

constexpr LONGLONG kSecond = 10'000'000;
constexpr LONGLONG kPicture = kSecond * 1001 / 30000;
constexpr int kPicturesOfChapter = 30;
constexpr int kMillisecond = 10'000;

using DvdPlayTest = ComTest;

// The samples that came in the last segment.
std::vector<RecordingSink::Sample> Samples(RecordingSink& sink) { return sink.Segments().back().samples; }

TEST_F(DvdPlayTest, PicturesFollowEachOtherWithoutAGapAndSoundKeepsTimeWithThem) {
  DvdGraph dvd;
  ASSERT_EQ(dvd.Open("chapters.iso"), S_OK);
  ASSERT_HRESULT_SUCCEEDED(dvd.Run());
  ASSERT_TRUE(dvd.Shows(1, 5, 8000));
  const auto pictures = Samples(*dvd.pictures.Get());
  LONGLONG zero = -1;
  int shown = 0;
  for (const auto& sample : pictures) {
    if (!sample.marks) continue;
    ++shown;
    EXPECT_EQ(sample.marks->chapter, sample.marks->picture / kPicturesOfChapter + 1);
    if (zero < 0) zero = sample.start - sample.marks->picture * kPicture;
    EXPECT_NEAR(static_cast<double>(sample.start - sample.marks->picture * kPicture),
                static_cast<double>(zero), 2.0 * kMillisecond);
  }
  EXPECT_GE(shown, 4 * kPicturesOfChapter * 9 / 10) << "a busy machine drops a few";
  // Each chapter begins with a loud tone.
  std::vector<LONGLONG> beeps;
  LONGLONG quietSince = -kSecond;
  for (const auto& sample : Samples(*dvd.sounds.Get())) {
    for (std::size_t i = 0; i < sample.sound.size(); ++i) {
      if (std::abs(sample.sound[i]) < 9000) continue;
      const LONGLONG at = sample.start + static_cast<LONGLONG>(i) * kSecond / 48000;
      if (at - quietSince > kSecond / 4) beeps.push_back(at);
      quietSince = at;
    }
  }
  ASSERT_GE(beeps.size(), 4U);
  for (std::size_t chapter = 0; chapter < 4; ++chapter) {
    const LONGLONG picture = zero + static_cast<LONGLONG>(chapter) * kPicturesOfChapter * kPicture;
    EXPECT_NEAR(static_cast<double>(beeps[chapter] - picture), 0, 40.0 * kMillisecond) << chapter;
  }
}

TEST_F(DvdPlayTest, TheEventsOfATitle) {
  DvdGraph dvd;
  ASSERT_EQ(dvd.Open("chapters"), S_OK);
  ASSERT_HRESULT_SUCCEEDED(dvd.Run());
  ASSERT_TRUE(dvd.Tells(EC_DVD_CHAPTER_START, 2));
  EXPECT_TRUE(dvd.Has(EC_DVD_DOMAIN_CHANGE, DVD_DOMAIN_Title));
  EXPECT_TRUE(dvd.Has(EC_DVD_TITLE_CHANGE, 1));
  EXPECT_TRUE(dvd.Has(EC_DVD_AUDIO_STREAM_CHANGE, 0));
  // Time codes count up, in thirty pictures a second: ten in the first chapter's middle, one second after it.
  EXPECT_TRUE(dvd.Tells(EC_DVD_CURRENT_TIME, static_cast<LONG_PTR>(0xC0010000)));
  ASSERT_EQ(dvd.control->ChapterSearch(25), S_OK);
  EXPECT_TRUE(dvd.Tells(EC_COMPLETE, std::nullopt, 6000)) << "the disc ends with its title";
  EXPECT_TRUE(dvd.Tells(EC_DVD_DOMAIN_CHANGE, DVD_DOMAIN_Stop));
  EXPECT_TRUE(dvd.Has(EC_DVD_PLAYBACK_STOPPED));
}

// The frame of a button, in thousandths of the picture.
struct ButtonFrame {
  int x;
  int y;
};
ButtonFrame FrameOf(int button, int columns) {
  const int index = button - 1;
  return {(60 + 160 * (index % columns) + 4) * 1000 / 720, (180 + 80 * (index / columns) + 24) * 1000 / 480};
}
bool IsLit(DvdGraph& dvd, int button, int columns) {
  const ButtonFrame frame = FrameOf(button, columns);
  return dvd.pictures->LastGreen(frame.x, frame.y) > 200;
}

TEST_F(DvdPlayTest, TheHighlightFollowsTheKeyAtOnceAlsoWhilePaused) {
  DvdGraph dvd;
  ASSERT_EQ(dvd.Open("menus"), S_OK);
  ASSERT_HRESULT_SUCCEEDED(dvd.Run());
  ASSERT_TRUE(dvd.Shows(101, 0));
  ASSERT_TRUE(dvd.Tells(EC_DVD_STILL_ON));
  const auto isLit = [&](int button) { return IsLit(dvd, button, 2); };
  EXPECT_TRUE(dvd.Until([&] { return isLit(1) && !isLit(2); }));
  EXPECT_LE(Milliseconds([&] {
              dvd.control->RightButtonSelect();
              EXPECT_TRUE(dvd.Until([&] { return isLit(2) && !isLit(1); }));
            }),
            60U);
  ASSERT_HRESULT_SUCCEEDED(dvd.mediaControl->Pause());
  dvd.Wait(100);
  EXPECT_LE(Milliseconds([&] {
              dvd.control->LeftButtonSelect();
              EXPECT_TRUE(dvd.Until([&] { return isLit(1) && !isLit(2); }));
            }),
            60U);
}

// How often the sound changes its sign in a second: twice its pitch.
double Pitch(const std::vector<RecordingSink::Sample>& samples) {
  std::size_t changes = 0;
  std::size_t count = 0;
  for (const auto& sample : samples) {
    for (std::size_t i = 1; i < sample.sound.size(); ++i)
      changes += (sample.sound[i - 1] < 0) != (sample.sound[i] < 0) ? 1 : 0;
    count += sample.sound.size();
  }
  return static_cast<double>(changes) / 2 / (static_cast<double>(count) / 48000);
}

TEST_F(DvdPlayTest, SoundOfEveryCodingIsHeard) {
  DvdGraph dvd;
  ASSERT_EQ(dvd.Open("streams"), S_OK);
  ASSERT_HRESULT_SUCCEEDED(dvd.Run());
  ASSERT_TRUE(dvd.Tells(EC_DVD_CHAPTER_START, 1));
  for (ULONG stream : {3U, 1U, 2U, 0U}) {
    ASSERT_EQ(dvd.control->AudioStreamChange(stream), S_OK);
    // A jump drops what was read of the other one.
    ASSERT_EQ(dvd.control->ChapterSearch(stream + 3), S_OK);
    dvd.Wait(900);
    auto samples = Samples(*dvd.sounds.Get());
    ASSERT_GT(samples.size(), 6U);
    samples.erase(samples.begin(), samples.begin() + static_cast<std::ptrdiff_t>(samples.size() / 2));
    EXPECT_NEAR(Pitch(samples), 440.0 * (stream + 1), 30) << stream;
  }
}

TEST_F(DvdPlayTest, RegistersBranchAndStillsHold) {
  DvdGraph dvd;
  ASSERT_EQ(dvd.Open("jumps"), S_OK);
  ASSERT_HRESULT_SUCCEEDED(dvd.Run());
  EXPECT_TRUE(dvd.Shows(4, 1));
  ASSERT_TRUE(dvd.Shows(6, 1, 6000)) << "title 3 by register 1";
  ASSERT_TRUE(dvd.Tells(EC_DVD_STILL_ON));
  const ULONGLONG held = Milliseconds([&] { EXPECT_TRUE(dvd.Tells(EC_DVD_STILL_OFF)); });
  EXPECT_NEAR(static_cast<double>(held), 2000, 250);
  EXPECT_TRUE(dvd.Shows(6, 2));
  dvd.Forget();
  ASSERT_TRUE(dvd.Tells(EC_DVD_STILL_ON)) << "for ever";
  EXPECT_FALSE(dvd.Tells(EC_DVD_STILL_OFF, std::nullopt, 1500));
  ASSERT_EQ(dvd.control->StillOff(), S_OK);
  EXPECT_TRUE(dvd.Tells(EC_COMPLETE));
}

TEST_F(DvdPlayTest, ScansShowKeyPicturesAtDoubleSpeed) {
  DvdGraph dvd;
  ASSERT_EQ(dvd.Open("chapters.iso"), S_OK);
  ASSERT_HRESULT_SUCCEEDED(dvd.Run());
  ASSERT_TRUE(dvd.Shows(1, 1)) << "before there is a chapter nothing is searched";
  ASSERT_EQ(dvd.control->ChapterSearch(5), S_OK);
  ASSERT_TRUE(dvd.Shows(1, 5));
  ASSERT_EQ(dvd.control->ForwardScan(2.0), S_OK);
  dvd.Wait(3000);
  EXPECT_NEAR(dvd.Shown()->chapter, 11, 1);
  ASSERT_EQ(dvd.control->BackwardScan(2.0), S_OK);
  dvd.Wait(3000);
  EXPECT_NEAR(dvd.Shown()->chapter, 5, 2);
  ASSERT_EQ(dvd.control->ForwardScan(1.0), S_OK);
  dvd.Wait(300);
  const DiscMarks before = *dvd.Shown();
  dvd.Wait(1000);
  EXPECT_NEAR(dvd.Shown()->picture - before.picture, 30, 6) << "normal speed again";
  ASSERT_EQ(dvd.control->BackwardScan(8.0), S_OK);
  EXPECT_TRUE(dvd.Tells(EC_DVD_PLAYBACK_RATE_CHANGE, 10000)) << "at the beginning it plays on";
}

TEST_F(DvdPlayTest, AScanEndsWithItsTitle) {
  const struct {
    const char* disc;
    int title;
    int film;
    int next;  // the film that follows
  } titles[] = {{"menus", 2, 2, 101}, {"jumps", 1, 4, 6}};
  for (const auto& [disc, title, film, next] : titles) {
    SCOPED_TRACE(disc);
    DvdGraph dvd;
    ASSERT_EQ(dvd.Open(disc), S_OK);
    ASSERT_HRESULT_SUCCEEDED(dvd.Run());
    ASSERT_TRUE(dvd.Tells(EC_DVD_DOMAIN_CHANGE));
    ASSERT_EQ(dvd.control->TitlePlay(static_cast<ULONG>(title)), S_OK);
    ASSERT_TRUE(dvd.Shows(film, 1));
    ASSERT_EQ(dvd.control->ForwardScan(2.0), S_OK);
    EXPECT_TRUE(dvd.Tells(EC_DVD_PLAYBACK_RATE_CHANGE, 20000));
    EXPECT_TRUE(dvd.Until([&] { return dvd.Shown()->film == next; }));
    EXPECT_TRUE(dvd.Tells(EC_DVD_PLAYBACK_RATE_CHANGE, 10000));
    if (next == 101) {
      EXPECT_TRUE(dvd.Until([&] { return IsLit(dvd, 1, 2); })) << "the menu's buttons";
    }
  }
}

TEST_F(DvdPlayTest, PausedItStandsAndJumpsShowTheirPicture) {
  DvdGraph dvd;
  ASSERT_EQ(dvd.Open("chapters"), S_OK);
  OAFilterState state = State_Stopped;
  ASSERT_HRESULT_SUCCEEDED(dvd.mediaControl->Pause());
  ASSERT_EQ(dvd.mediaControl->GetState(3000, &state), S_OK) << "cued";
  EXPECT_EQ(dvd.Shown()->picture, 0);
  dvd.sounds->atSegment = [] { ::Sleep(200); };  // a disc that is slow to read
  ASSERT_EQ(dvd.control->ChapterSearch(7), S_OK);
  EXPECT_TRUE(dvd.Shows(1, 7));
  const int picture = dvd.Shown()->picture;
  dvd.Wait(500);
  EXPECT_EQ(dvd.Shown()->picture, picture);
  ASSERT_HRESULT_SUCCEEDED(dvd.Run());
  EXPECT_TRUE(dvd.Shows(1, 8));
}

// The platform's renderer waits for itself when it is flushed while it is told the end.
TEST_F(DvdPlayTest, AWishAtTheEndWaitsUntilTheRendererWasTold) {
  DvdGraph dvd;
  ASSERT_EQ(dvd.Open("chapters"), S_OK);
  std::atomic<bool> told{false};
  std::atomic<bool> wished{false};
  std::atomic<int> flushesMeanwhile{-1};
  dvd.pictures->atEnd = [&] {
    const int before = dvd.pictures->Flushes();
    told = true;
    for (int i = 0; i < 400 && !wished; ++i) ::Sleep(10);
    ::Sleep(300);
    flushesMeanwhile = dvd.pictures->Flushes() - before;
  };
  ASSERT_HRESULT_SUCCEEDED(dvd.Run());
  ASSERT_TRUE(dvd.Shows(1, 1));
  ASSERT_EQ(dvd.control->ChapterSearch(25), S_OK);
  ASSERT_TRUE(dvd.Until([&] { return told.load(); }, 6000));
  ASSERT_HRESULT_SUCCEEDED(dvd.mediaControl->Pause());
  const int flushes = dvd.pictures->Flushes();
  wished = true;
  EXPECT_EQ(dvd.control->AudioStreamChange(0), S_OK);
  EXPECT_TRUE(dvd.Until([&] { return dvd.pictures->Flushes() > flushes; })) << "the wish is seen";
  EXPECT_EQ(flushesMeanwhile, 0);
}

TEST_F(DvdPlayTest, StoppedAsPlayersDoItBeginsAnew) {
  DvdGraph dvd(false);
  ASSERT_EQ(dvd.Open("menus"), S_OK);
  ASSERT_HRESULT_SUCCEEDED(dvd.Run());
  ASSERT_TRUE(dvd.Tells(EC_DVD_STILL_ON, std::nullopt, 6000)) << "in a menu that stands still";
  for (int round = 0; round < 3; ++round) {
    OAFilterState state = State_Running;
    LONGLONG start = 0;
    dvd.mediaControl->Pause();
    dvd.graph.As<IMediaSeeking>()->SetPositions(&start, AM_SEEKING_AbsolutePositioning, nullptr,
                                                AM_SEEKING_NoPositioning);
    EXPECT_EQ(dvd.mediaControl->GetState(3000, &state), S_OK);
    EXPECT_LE(Milliseconds([&] { dvd.mediaControl->Stop(); }), 300U);
    ASSERT_TRUE(dvd.Tells(EC_DVD_DOMAIN_CHANGE, DVD_DOMAIN_Stop));
    dvd.Forget();
    ASSERT_HRESULT_SUCCEEDED(dvd.Run());
    EXPECT_HRESULT_SUCCEEDED(dvd.control->ForwardScan(1.0));
    EXPECT_TRUE(dvd.Tells(EC_DVD_DOMAIN_CHANGE, DVD_DOMAIN_VideoManagerMenu));
    dvd.Wait(200 * round);
  }
}

}  // namespace
}  // namespace quorvex
