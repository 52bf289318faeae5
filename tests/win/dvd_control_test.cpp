// Every method of IDvdControl and IDvdInfo on real discs: what they do and tell, and the codes with which
// they refuse.
#include <gtest/gtest.h>

#include <dvdevcod.h>
#include <vfwmsgs.h>

#include <cstring>

#include "tests/support/com_test.h"
#include "tests/support/dvd_graph.h"
#include "tests/support/temp_folder.h"

namespace quorvex {
namespace {

class DvdControlTest : public ComTest {
 protected:
  // Plays a disc until a film and chapter of it are shown.
  static void Play(DvdGraph& dvd, const char* disc, int film, int chapter) {
    ASSERT_EQ(dvd.Open(disc), S_OK);
    ASSERT_HRESULT_SUCCEEDED(dvd.Run());
    ASSERT_TRUE(dvd.Shows(film, chapter));
    ASSERT_TRUE(dvd.Tells(EC_DVD_DOMAIN_CHANGE));
  }
};

// Seconds as a packed time code.
constexpr ULONG Seconds(ULONG seconds) { return (seconds / 10 << 20) | (seconds % 10 << 16); }

TEST_F(DvdControlTest, EveryKindOfJumpGoesToItsChapter) {
  const struct {
    const char* name;
    HRESULT (*jump)(IDvdControl&);
    int chapter;  // that is shown then
  } jumps[] = {
      {"ChapterSearch", [](IDvdControl& dvd) { return dvd.ChapterSearch(12); }, 12},
      {"ChapterPlay", [](IDvdControl& dvd) { return dvd.ChapterPlay(1, 20); }, 20},
      {"TitlePlay", [](IDvdControl& dvd) { return dvd.TitlePlay(1); }, 1},
      {"TimeSearch", [](IDvdControl& dvd) { return dvd.TimeSearch(Seconds(15)); }, 16},
      {"TimePlay", [](IDvdControl& dvd) { return dvd.TimePlay(1, Seconds(22)); }, 23},
      {"NextPGSearch", [](IDvdControl& dvd) { return dvd.NextPGSearch(); }, 6},
      {"PrevPGSearch", [](IDvdControl& dvd) { return dvd.PrevPGSearch(); }, 4},
  };
  DvdGraph dvd;
  Play(dvd, "chapters.iso", 1, 1);
  for (const auto& [name, jump, chapter] : jumps) {
    SCOPED_TRACE(name);
    ASSERT_EQ(dvd.control->ChapterSearch(5), S_OK);
    ASSERT_TRUE(dvd.Shows(1, 5));
    ASSERT_EQ(jump(*dvd.control.Get()), S_OK);
    // By the disc's time codes a chapter lasts one second.
    EXPECT_TRUE(dvd.Shows(1, chapter, 900));
    DVD_PLAYBACK_LOCATION location{};
    EXPECT_EQ(dvd.info->GetCurrentLocation(&location), S_OK);
    EXPECT_EQ(location.TitleNum, 1U);
    EXPECT_EQ(location.ChapterNum, static_cast<ULONG>(chapter));
  }
}

TEST_F(DvdControlTest, AFilmStopsPausesAndGoesOnWhereItWas) {
  DvdGraph dvd;
  Play(dvd, "chapters.iso", 1, 3);
  ASSERT_TRUE(dvd.Until([&] { return dvd.Shown()->picture >= 75; }));
  ASSERT_EQ(dvd.control->TopPGSearch(), S_OK);
  EXPECT_TRUE(dvd.Until([&] { return dvd.Shown()->picture >= 60 && dvd.Shown()->picture < 66; }, 1000));
  ASSERT_EQ(dvd.control->StopForResume(), S_OK);
  ASSERT_TRUE(dvd.Tells(EC_DVD_DOMAIN_CHANGE, DVD_DOMAIN_Stop));
  EXPECT_EQ(dvd.control->StopForResume(), VFW_E_DVD_INVALIDDOMAIN);
  const int picture = dvd.Shown()->picture;
  EXPECT_EQ(dvd.control->GoUp(), VFW_E_DVD_NO_GOUP_PGC) << "what is refused does not take it up";
  dvd.Wait(400);
  EXPECT_EQ(dvd.Shown()->picture, picture);
  ASSERT_EQ(dvd.control->Resume(), S_OK);
  EXPECT_TRUE(dvd.Until([&] { return dvd.Shown()->picture > picture; }));
  EXPECT_LE(dvd.Shown()->chapter, 5);
  ASSERT_HRESULT_SUCCEEDED(dvd.control->PauseOn());
  OAFilterState state = State_Running;
  dvd.mediaControl->GetState(2000, &state);
  EXPECT_EQ(state, State_Paused);
  ASSERT_HRESULT_SUCCEEDED(dvd.control->PauseOff());
  EXPECT_TRUE(dvd.Shows(1, dvd.Shown()->chapter + 1));
}

TEST_F(DvdControlTest, PlayingChaptersCanStopByItself) {
  const struct {
    const char* what;
    const char* disc;
    int first;  // film
    ULONG title;
    ULONG chapter;
    ULONG count;
    int last;  // chapter that is shown; of the film with the title's number
  } plays[] = {{"chapters in a title", "chapters.iso", 1, 1, 10, 2, 11},
               {"a title's last, then the disc ends", "chapters.iso", 1, 1, 25, 1, 25},
               {"a title's last, then a menu comes", "menus", 101, 2, 2, 5, 3}};
  for (const auto& [what, disc, first, title, chapter, count, last] : plays) {
    SCOPED_TRACE(what);
    DvdGraph dvd;
    Play(dvd, disc, first, first == 1 ? 1 : 0);
    ASSERT_EQ(dvd.control->ChapterPlayAutoStop(title, chapter, count), S_OK);
    ASSERT_TRUE(dvd.Shows(static_cast<int>(title), last));
    EXPECT_TRUE(dvd.Tells(EC_DVD_CHAPTER_AUTOSTOP));
    EXPECT_TRUE(dvd.Tells(EC_DVD_PLAYBACK_STOPPED, DVD_PB_STOPPED_PlayChapterAutoStop));
    EXPECT_EQ(dvd.Shown()->film, static_cast<int>(title));
    EXPECT_EQ(dvd.Shown()->chapter, last);
    ASSERT_EQ(dvd.control->TitlePlay(1), S_OK) << "and it can be played again";
    EXPECT_TRUE(dvd.Shows(1, 2));
  }
}

TEST_F(DvdControlTest, WhatATitleHasNotOrItsDomainForbidsIsRefused) {
  DvdGraph dvd;
  ASSERT_EQ(dvd.Open("streams"), S_OK);
  ULONG value = 0;
  DVD_PLAYBACK_LOCATION location{};
  EXPECT_EQ(dvd.control->ChapterSearch(3), VFW_E_DVD_GRAPHNOTREADY) << "nothing runs";
  EXPECT_EQ(dvd.control->ButtonActivate(), VFW_E_DVD_GRAPHNOTREADY);
  EXPECT_EQ(dvd.info->GetCurrentLocation(&location), VFW_E_DVD_GRAPHNOTREADY);
  ASSERT_HRESULT_SUCCEEDED(dvd.Run());
  ASSERT_TRUE(dvd.Shows(1, 1));
  ASSERT_TRUE(dvd.Tells(EC_DVD_TITLE_CHANGE));
  IDvdControl& control = *dvd.control.Get();
  const struct {
    const char* what;
    HRESULT result;
    HRESULT expected;
  } refusals[] = {
      {"title 0", control.TitlePlay(0), E_INVALIDARG},
      {"chapter 26", control.ChapterPlay(1, 26), E_INVALIDARG},
      {"a time with a digit above nine", control.TimeSearch(0x000A0000), E_INVALIDARG},
      {"no chapters", control.ChapterPlayAutoStop(1, 1, 0), E_INVALIDARG},
      {"audio stream 4", control.AudioStreamChange(4), E_INVALIDARG},
      {"angle 2", control.AngleChange(2), E_INVALIDARG},
      {"level 9", control.ParentalLevelSelect(9), E_INVALIDARG},
      {"a disc without menus", control.MenuCall(DVD_MENU_Root), VFW_E_DVD_MENU_DOES_NOT_EXIST},
      {"no buttons", control.ButtonActivate(), VFW_E_DVD_NO_BUTTON},
      {"none under the mouse", control.MouseSelect({10, 10}), VFW_E_DVD_NO_BUTTON},
      {"no still", control.StillOff(), VFW_E_DVD_INVALIDDOMAIN},
      {"no menu to go back from", control.Resume(), VFW_E_DVD_INVALIDDOMAIN},
      {"nothing above", control.GoUp(), VFW_E_DVD_NO_GOUP_PGC},
      {"no speed", control.ForwardScan(0), E_INVALIDARG},
      {"no karaoke", control.KaraokeAudioPresentationModeChange(1), VFW_E_DVD_NOT_IN_KARAOKE_MODE},
      {"before chapter 1", control.PrevPGSearch(), VFW_E_DVD_OPERATION_INHIBITED},
      {"chapters of title 9", dvd.info->GetNumberOfChapters(9, &value), E_INVALIDARG},
      {"language of audio 4", dvd.info->GetAudioLanguage(4, &value), E_INVALIDARG},
  };
  for (const auto& refusal : refusals) EXPECT_EQ(refusal.result, refusal.expected) << refusal.what;
}

TEST_F(DvdControlTest, LanguagesAndAttributesOfStreams) {
  DvdGraph dvd;
  Play(dvd, "streams", 1, 1);
  constexpr LCID kLanguages[] = {0x0009, 0, 0x000C, 0x0007};  // English, none, French, German
  constexpr const char* kLetters[] = {"en", "", "fr", "de"};
  constexpr int kCodings[] = {0, 2, 4, 6};  // AC-3, MPEG, linear PCM, DTS
  for (ULONG stream = 0; stream < 4; ++stream) {
    LCID language = 1;
    EXPECT_EQ(dvd.info->GetAudioLanguage(stream, &language), S_OK);
    EXPECT_EQ(language, kLanguages[stream]);
    EXPECT_EQ(dvd.info->GetSubpictureLanguage(stream, &language), S_OK);
    EXPECT_EQ(language, kLanguages[stream]);
    ASSERT_EQ(dvd.control->AudioStreamChange(stream), S_OK);
    ASSERT_EQ(dvd.control->SubpictureStreamChange(stream, FALSE), S_OK);
    DVD_AudioATR audio{};
    DVD_SubpictureATR subpicture{};
    ASSERT_EQ(dvd.info->GetCurrentAudioAttributes(&audio), S_OK) << "seen at once";
    ASSERT_EQ(dvd.info->GetCurrentSubpictureAttributes(&subpicture), S_OK);
    EXPECT_EQ(audio[0] >> 5, kCodings[stream]);
    if (kLetters[stream][0] == '\0') continue;
    EXPECT_EQ(std::memcmp(&audio[2], kLetters[stream], 2), 0);
    EXPECT_EQ(std::memcmp(&subpicture[2], kLetters[stream], 2), 0);
  }
  ULONG length = 0;
  EXPECT_EQ(dvd.info->GetTotalTitleTime(&length), S_OK);
  EXPECT_EQ(length & 0x00FFFFFF, Seconds(25)) << std::hex << length;
  DVD_VideoATR video{};
  EXPECT_EQ(dvd.info->GetCurrentVideoAttributes(&video), S_OK);
  EXPECT_EQ(video[0] >> 6, 1) << "MPEG-2";
}

TEST_F(DvdControlTest, MenusByNumberAndWhatTheyForbid) {
  DvdGraph dvd;
  Play(dvd, "menus", 101, 0);
  ASSERT_TRUE(dvd.Tells(EC_DVD_BUTTON_CHANGE, 2));
  DVD_PLAYBACK_LOCATION location{};
  EXPECT_EQ(dvd.info->GetCurrentLocation(&location), VFW_E_DVD_INVALIDDOMAIN);
  EXPECT_EQ(dvd.control->ChapterSearch(1), VFW_E_DVD_INVALIDDOMAIN);
  EXPECT_EQ(dvd.control->ForwardScan(2.0), VFW_E_DVD_INVALIDDOMAIN);
  EXPECT_EQ(dvd.control->AudioStreamChange(0), VFW_E_DVD_INVALIDDOMAIN);
  EXPECT_EQ(dvd.control->Resume(), VFW_E_DVD_NO_RESUME_INFORMATION);
  EXPECT_EQ(dvd.control->ButtonSelectAndActivate(5), VFW_E_DVD_NO_BUTTON);
  ASSERT_EQ(dvd.control->ButtonSelectAndActivate(2), S_OK);
  EXPECT_TRUE(dvd.Shows(2, 1));
  ASSERT_EQ(dvd.control->MenuCall(DVD_MENU_Title), S_OK);
  EXPECT_TRUE(dvd.Shows(101, 0));
}

// A disc that forbids operations in every unit.
std::string MakeForbidding(const TempFolder& folder, ULONG operations) {
  constexpr std::string_view kUnitBegins("\0\0\1\xBF\x03\xD4\0", 7);
  constexpr std::size_t kOperations = 15;  // behind the unit's begin
  std::string bytes = folder.Read(std::filesystem::path(DiscPath("menus.iso")).string());
  for (std::size_t at = bytes.find(kUnitBegins); at != std::string::npos;
       at = bytes.find(kUnitBegins, at + 1))
    for (std::size_t i = 0; i < 4; ++i)
      bytes[at + kOperations + i] = static_cast<char>(operations >> (24 - 8 * i));
  return folder.Write("disc.iso", bytes);
}

TEST_F(DvdControlTest, WhatADiscForbidsIsRefusedAndNothingElse) {
  const TempFolder folder;
  constexpr ULONG kForbidden = UOP_FLAG_ShowMenu_Angle | UOP_FLAG_Select_Audio_Stream;
  DvdGraph dvd;
  Play(dvd, MakeForbidding(folder, kForbidden).c_str(), 101, 0);
  EXPECT_TRUE(dvd.Tells(EC_DVD_VALID_UOPS_CHANGE, static_cast<LONG_PTR>(kForbidden)));
  ULONG told = 0;
  EXPECT_EQ(dvd.info->GetCurrentUOPS(&told), S_OK);
  EXPECT_EQ(told, kForbidden);
  EXPECT_EQ(dvd.control->MenuCall(DVD_MENU_Angle), VFW_E_DVD_OPERATION_INHIBITED);
  EXPECT_EQ(dvd.control->RightButtonSelect(), S_OK) << "a menu's buttons";
  ASSERT_EQ(dvd.control->TitlePlay(1), S_OK);
  ASSERT_TRUE(dvd.Shows(1, 1));
  EXPECT_EQ(dvd.control->AudioStreamChange(1), VFW_E_DVD_OPERATION_INHIBITED);
  EXPECT_EQ(dvd.control->SubpictureStreamChange(0, TRUE), S_OK);
  EXPECT_EQ(dvd.control->MenuCall(DVD_MENU_Root), S_OK) << "the menu of the sound is another operation";
}

}  // namespace
}  // namespace quorvex
