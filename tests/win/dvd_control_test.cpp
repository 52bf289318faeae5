// Every method of IDvdControl and IDvdInfo on real discs: what they do and tell, and the codes with which
// they refuse.
#include <gtest/gtest.h>

#include <dvdevcod.h>
#include <vfwmsgs.h>

#include <algorithm>
#include <cstring>

#include "tests/support/dvd_graph.h"

namespace quorvex {
namespace {

class DvdControlTest : public testing::Test {
 protected:
  DvdControlTest() { ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
  ~DvdControlTest() override { ::CoUninitialize(); }

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

// A jump within the film of 25 chapters, from its chapter 5.
struct JumpCase {
  const char* name;
  HRESULT (*jump)(IDvdControl&);
  int chapter;  // that is shown then
};
void PrintTo(const JumpCase& jump, std::ostream* out) { *out << jump.name; }

const JumpCase kJumps[] = {
    {"ChapterSearch", [](IDvdControl& dvd) { return dvd.ChapterSearch(12); }, 12},
    {"ChapterPlay", [](IDvdControl& dvd) { return dvd.ChapterPlay(1, 20); }, 20},
    {"TitlePlay", [](IDvdControl& dvd) { return dvd.TitlePlay(1); }, 1},
    {"TimeSearch", [](IDvdControl& dvd) { return dvd.TimeSearch(Seconds(15)); }, 16},
    {"TimePlay", [](IDvdControl& dvd) { return dvd.TimePlay(1, Seconds(22)); }, 23},
    {"NextPGSearch", [](IDvdControl& dvd) { return dvd.NextPGSearch(); }, 6},
    {"PrevPGSearch", [](IDvdControl& dvd) { return dvd.PrevPGSearch(); }, 4},
};

class DvdJumpTest : public DvdControlTest, public testing::WithParamInterface<JumpCase> {};
INSTANTIATE_TEST_SUITE_P(All, DvdJumpTest, testing::ValuesIn(kJumps),
                         [](const auto& given) { return std::string(given.param.name); });

TEST_P(DvdJumpTest, GoesThere) {
  DvdGraph dvd;
  Play(dvd, "chapters.iso", 1, 1);
  ASSERT_EQ(dvd.control->ChapterSearch(5), S_OK);
  ASSERT_TRUE(dvd.Shows(1, 5));
  ASSERT_EQ(GetParam().jump(*dvd.control.Get()), S_OK);
  // By the disc's time codes a chapter lasts one second.
  EXPECT_TRUE(dvd.Shows(1, GetParam().chapter, 900));
  DVD_PLAYBACK_LOCATION location{};
  EXPECT_EQ(dvd.info->GetCurrentLocation(&location), S_OK);
  EXPECT_EQ(location.TitleNum, 1U);
  EXPECT_EQ(location.ChapterNum, static_cast<ULONG>(GetParam().chapter));
}

TEST_F(DvdControlTest, AChapterBeginsAgainFromItsTop) {
  DvdGraph dvd;
  Play(dvd, "chapters.iso", 1, 3);
  ASSERT_TRUE(dvd.Until([&] { return dvd.Shown()->picture >= 75; }));
  ASSERT_EQ(dvd.control->TopPGSearch(), S_OK);
  EXPECT_TRUE(dvd.Until([&] { return dvd.Shown()->picture >= 60 && dvd.Shown()->picture < 66; }, 1000));
}

TEST_F(DvdControlTest, PlayingChaptersCanStopByItself) {
  DvdGraph dvd;
  Play(dvd, "chapters.iso", 1, 1);
  ASSERT_EQ(dvd.control->ChapterPlayAutoStop(1, 10, 2), S_OK);
  ASSERT_TRUE(dvd.Shows(1, 11));
  EXPECT_TRUE(dvd.Tells(EC_DVD_CHAPTER_AUTOSTOP));
  EXPECT_TRUE(dvd.Tells(EC_DVD_PLAYBACK_STOPPED, DVD_PB_STOPPED_PlayChapterAutoStop));
  EXPECT_EQ(dvd.Shown()->chapter, 11);
  ASSERT_EQ(dvd.control->TitlePlay(1), S_OK) << "and it can be played again";
  EXPECT_TRUE(dvd.Shows(1, 2));
}

TEST_F(DvdControlTest, StoppedForResumingItGoesOnWhereItWas) {
  DvdGraph dvd;
  Play(dvd, "chapters.iso", 1, 3);
  ASSERT_EQ(dvd.control->StopForResume(), S_OK);
  ASSERT_TRUE(dvd.Tells(EC_DVD_DOMAIN_CHANGE, DVD_DOMAIN_Stop));
  EXPECT_EQ(dvd.control->StopForResume(), VFW_E_DVD_INVALIDDOMAIN);
  const int picture = dvd.Shown()->picture;
  dvd.Wait(400);
  EXPECT_EQ(dvd.Shown()->picture, picture);
  ASSERT_EQ(dvd.control->Resume(), S_OK);
  EXPECT_TRUE(dvd.Until([&] { return dvd.Shown()->picture > picture; }));
  EXPECT_LE(dvd.Shown()->chapter, 5);
}

TEST_F(DvdControlTest, PausingAndGoingOnAreTheGraphs) {
  DvdGraph dvd;
  Play(dvd, "chapters.iso", 1, 1);
  ASSERT_HRESULT_SUCCEEDED(dvd.control->PauseOn());
  OAFilterState state = State_Running;
  dvd.mediaControl->GetState(2000, &state);
  EXPECT_EQ(state, State_Paused);
  ASSERT_HRESULT_SUCCEEDED(dvd.control->PauseOff());
  EXPECT_TRUE(dvd.Shows(1, 2));
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
      {"title 2", control.TitlePlay(2), E_INVALIDARG},
      {"chapter 26", control.ChapterPlay(1, 26), E_INVALIDARG},
      {"chapter 0", control.ChapterSearch(0), E_INVALIDARG},
      {"a time with a digit above nine", control.TimeSearch(0x000A0000), E_INVALIDARG},
      {"a time behind the end", control.TimeSearch(Seconds(40)), E_INVALIDARG},
      {"no chapters", control.ChapterPlayAutoStop(1, 1, 0), E_INVALIDARG},
      {"audio stream 4", control.AudioStreamChange(4), E_INVALIDARG},
      {"subpicture stream 4", control.SubpictureStreamChange(4, TRUE), E_INVALIDARG},
      {"angle 2", control.AngleChange(2), E_INVALIDARG},
      {"level 9", control.ParentalLevelSelect(9), E_INVALIDARG},
      {"no such menu number", control.MenuCall(static_cast<DVD_MENU_ID>(1)), E_INVALIDARG},
      {"a disc without menus", control.MenuCall(DVD_MENU_Root), VFW_E_DVD_MENU_DOES_NOT_EXIST},
      {"no buttons", control.ButtonActivate(), VFW_E_DVD_NO_BUTTON},
      {"none to move to", control.UpperButtonSelect(), VFW_E_DVD_NO_BUTTON},
      {"none under the mouse", control.MouseSelect({10, 10}), VFW_E_DVD_NO_BUTTON},
      {"no still", control.StillOff(), VFW_E_DVD_INVALIDDOMAIN},
      {"no menu to go back from", control.Resume(), VFW_E_DVD_INVALIDDOMAIN},
      {"nothing above", control.GoUp(), VFW_E_DVD_NO_GOUP_PGC},
      {"no speed", control.ForwardScan(0), E_INVALIDARG},
      {"a speed below zero", control.BackwardScan(-2), E_INVALIDARG},
      {"no karaoke", control.KaraokeAudioPresentationModeChange(1), VFW_E_DVD_NOT_IN_KARAOKE_MODE},
      {"no display mode", control.VideoModePreferrence(9), E_INVALIDARG},
      {"no language", control.MenuLanguageSelect(0x7FFFF), E_INVALIDARG},
      {"another root", control.SetRoot(L"C:\\"), E_NOTIMPL},
      {"before chapter 1", control.PrevPGSearch(), VFW_E_DVD_OPERATION_INHIBITED},
      {"chapters of title 9", dvd.info->GetNumberOfChapters(9, &value), E_INVALIDARG},
      {"levels of title 9", dvd.info->GetTitleParentalLevels(9, &value), E_INVALIDARG},
      {"language of audio 4", dvd.info->GetAudioLanguage(4, &value), E_INVALIDARG},
      {"language of subpicture 9", dvd.info->GetSubpictureLanguage(9, &value), E_INVALIDARG},
  };
  for (const auto& refusal : refusals) EXPECT_EQ(refusal.result, refusal.expected) << refusal.what;
}

TEST_F(DvdControlTest, WhatIsOnADiscIsTold) {
  DvdGraph dvd;
  Play(dvd, "streams", 1, 1);
  IDvdInfo& info = *dvd.info.Get();
  ULONG volumes = 0;
  ULONG volume = 0;
  ULONG titles = 0;
  DVD_DISC_SIDE side{};
  EXPECT_EQ(info.GetCurrentVolumeInfo(&volumes, &volume, &side, &titles), S_OK);
  EXPECT_EQ(volumes, 1U);
  EXPECT_EQ(titles, 1U);
  EXPECT_EQ(side, DVD_SIDE_A);
  ULONG chapters = 0;
  EXPECT_EQ(info.GetNumberOfChapters(1, &chapters), S_OK);
  EXPECT_EQ(chapters, 25U);
  ULONG length = 0;
  EXPECT_EQ(info.GetTotalTitleTime(&length), S_OK);
  EXPECT_EQ(length & 0x00FFFFFF, Seconds(25)) << std::hex << length;
  ULONG available = 0;
  ULONG current = 9;
  WINBOOL disabled = FALSE;
  EXPECT_EQ(info.GetCurrentAudio(&available, &current), S_OK);
  EXPECT_EQ(available, 4U);
  EXPECT_EQ(current, 0U);
  EXPECT_EQ(info.GetCurrentSubpicture(&available, &current, &disabled), S_OK);
  EXPECT_EQ(available, 4U);
  EXPECT_TRUE(disabled);
  EXPECT_EQ(info.GetCurrentAngle(&available, &current), S_OK);
  EXPECT_EQ(available, 1U);
  EXPECT_EQ(current, 1U);
  EXPECT_EQ(info.GetCurrentButton(&available, &current), S_OK);
  EXPECT_EQ(available, 0U);
  ULONG operations = 1;
  EXPECT_EQ(info.GetCurrentUOPS(&operations), S_OK);
  EXPECT_EQ(operations, 0U);
  DVD_DOMAIN domain{};
  EXPECT_EQ(info.GetCurrentDomain(&domain), S_OK);
  EXPECT_EQ(domain, DVD_DOMAIN_Title);
  char root[MAX_PATH] = "";
  EXPECT_EQ(info.GetRoot(root, sizeof root, &length), S_OK);
  EXPECT_NE(std::string(root).find("streams"), std::string::npos);
  EXPECT_EQ(info.GetRoot(root, 3, &length), E_OUTOFMEMORY);
  BYTE texts[64] = {};
  EXPECT_EQ(info.GetDVDTextInfo(texts, sizeof texts, &length), VFW_E_DVD_NO_ATTRIBUTES);
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
  DVD_VideoATR video{};
  EXPECT_EQ(dvd.info->GetCurrentVideoAttributes(&video), S_OK);
  EXPECT_EQ(video[0] >> 6, 1) << "MPEG-2";
  DVD_ATR whole{};
  EXPECT_EQ(dvd.info->GetTitleAttributes(1, &whole), S_OK);
  EXPECT_EQ(whole.pbATRI[0x103], 4) << "four streams of sound";
  EXPECT_EQ(dvd.info->GetVMGAttributes(&whole), S_OK);
}

TEST_F(DvdControlTest, RegistersShowWhatIsChosen) {
  DvdGraph dvd;
  Play(dvd, "jumps", 4, 1);
  GPRMARRAY general{};
  EXPECT_EQ(dvd.info->GetAllGPRMs(&general), S_OK);
  EXPECT_EQ(general[1], 7) << "set by the first play";
  ULONG level = 0;
  ULONG country = 0;
  EXPECT_EQ(dvd.info->GetPlayerParentalLevel(&level, &country), S_OK);
  EXPECT_EQ(level, 0xFFFFFFFF) << "no level";
  ASSERT_EQ(dvd.control->ParentalLevelSelect(3), S_OK);
  ASSERT_EQ(dvd.control->ParentalCountrySelect('D' << 8 | 'E'), S_OK);
  ASSERT_EQ(dvd.control->MenuLanguageSelect(0x0407), S_OK);
  EXPECT_EQ(dvd.info->GetPlayerParentalLevel(&level, &country), S_OK);
  EXPECT_EQ(level, 3U);
  EXPECT_EQ(country, static_cast<ULONG>('D' << 8 | 'E'));
  SPRMARRAY system{};
  EXPECT_EQ(dvd.info->GetAllSPRMs(&system), S_OK);
  EXPECT_EQ(system[0], 'd' << 8 | 'e');
  EXPECT_EQ(system[13], 3);
  EXPECT_EQ(dvd.control->VideoModePreferrence(DISPLAY_16x9), S_OK);
  EXPECT_EQ(dvd.info->GetTitleParentalLevels(1, &level), S_OK);
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

TEST_F(DvdControlTest, TheMousePointsAtButtonsInTheRenderersPixels) {
  DvdGraph dvd(false);
  ASSERT_EQ(dvd.Open("menus"), S_OK);
  ComPtr<IVideoWindow> window;
  ASSERT_EQ(dvd.builder->GetDvdInterface(IID_IVideoWindow, window.ReceiveVoid()), S_OK);
  ASSERT_HRESULT_SUCCEEDED(dvd.Run());
  ASSERT_TRUE(dvd.Tells(EC_DVD_STILL_ON, std::nullopt, 6000));
  // The title menu's second button, 720 by 480 on the disc, in a window of another size.
  window->put_WindowStyle(WS_POPUP);
  window->SetWindowPosition(0, 0, 1000, 750);
  ComPtr<IBasicVideo> video;
  ASSERT_EQ(dvd.builder->GetDvdInterface(IID_IBasicVideo, video.ReceiveVoid()), S_OK);
  video->SetDestinationPosition(0, 0, 1000, 750);
  const POINT second{(60 + 160 + 60) * 1000 / 720, (180 + 24) * 750 / 480};
  EXPECT_EQ(dvd.control->MouseSelect(second), S_OK);
  ULONG available = 0;
  ULONG current = 0;
  EXPECT_EQ(dvd.info->GetCurrentButton(&available, &current), S_OK);
  EXPECT_EQ(current, 2U);
  EXPECT_EQ(dvd.control->MouseActivate({5, 745}), VFW_E_DVD_NO_BUTTON);
  EXPECT_EQ(dvd.control->MouseActivate(second), S_OK);
  EXPECT_TRUE(dvd.Tells(EC_DVD_TITLE_CHANGE, 2));
  video.Reset();
  window.Reset();
}

TEST_F(DvdControlTest, CaptionSettingsAreKept) {
  DvdGraph dvd;
  ASSERT_EQ(dvd.Open("captions"), S_OK);
  Line21State state = kLine21StateOn;
  EXPECT_EQ(dvd.captions->GetServiceState(&state), S_OK);
  EXPECT_EQ(state, kLine21StateOff);
  for (const Line21Service service :
       {kLine21ServiceCaption2, kLine21ServiceText1, kLine21ServiceText2, kLine21ServiceCaption1}) {
    EXPECT_EQ(dvd.captions->SetCurrentService(service), S_OK);
    Line21Service now = kLine21ServiceNone;
    EXPECT_EQ(dvd.captions->GetCurrentService(&now), S_OK);
    EXPECT_EQ(now, service);
  }
  EXPECT_EQ(dvd.captions->SetCurrentService(kLine21ServiceXds), E_INVALIDARG);
  EXPECT_EQ(dvd.captions->SetDrawBackgroundMode(kLine21BackgroundTransparent), S_OK);
  Line21Background background = kLine21BackgroundOpaque;
  EXPECT_EQ(dvd.captions->GetDrawBackgroundMode(&background), S_OK);
  EXPECT_EQ(background, kLine21BackgroundTransparent);
}

}  // namespace
}  // namespace quorvex
