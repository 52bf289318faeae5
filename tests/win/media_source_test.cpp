// The media source as any program meets it: a bare filter graph, RenderFile, real files of many kinds.
#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <fstream>

#include "tests/support/com_test.h"
#include "tests/support/media_graph.h"
#include "tests/support/pump.h"
#include "tests/support/temp_folder.h"

namespace quorvex {
namespace {

constexpr LONGLONG kSecond = 10'000'000;
constexpr LONGLONG kFrame = kSecond / 25;
constexpr int kPictures = 100;
constexpr ULONGLONG kStopLimitMs = 200;

std::filesystem::path MediaPath(const std::string& name) {
  return std::filesystem::path(QUORVEX_TEST_MEDIA) / name;
}

// One of the files that make_media.py makes.
struct Media {
  const char* name;
  bool picture;
  bool sound;
};
void PrintTo(const Media& media, std::ostream* out) { *out << media.name; }

const Media kFiles[] = {
    {"mpeg4_mp3.avi", true, true},     {"mpeg1_mp2.mpg", true, true},   {"mpeg2_ac3.vob", true, true},
    {"mpeg2_mp2.ts", true, true},      {"h264_aac.ts", true, true},     {"h264_aac.mp4", true, true},
    {"mjpeg_pcm.mov", true, true},     {"h264_vorbis.mkv", true, true}, {"theora_vorbis.ogv", true, true},
    {"picture_only.avi", true, false}, {"sound.mp3", false, true},      {"sound.ogg", false, true},
    {"ramp.wav", false, true},         {"ramp.flac", false, true},
};

class MediaSourceFileTest : public ComTest, public testing::WithParamInterface<Media> {
 protected:
  const Media& media = GetParam();
};
class MediaSourcePictureTest : public MediaSourceFileTest {};
using MediaSourceTest = ComTest;

std::string FileName(const testing::TestParamInfo<Media>& info) {
  std::string name = info.param.name;
  std::replace(name.begin(), name.end(), '.', '_');
  return name;
}
std::vector<Media> FilesWithPicture() {
  std::vector<Media> files;
  std::copy_if(std::begin(kFiles), std::end(kFiles), std::back_inserter(files),
               [](const Media& media) { return media.picture; });
  return files;
}
INSTANTIATE_TEST_SUITE_P(All, MediaSourceFileTest, testing::ValuesIn(kFiles), FileName);
INSTANTIATE_TEST_SUITE_P(All, MediaSourcePictureTest, testing::ValuesIn(FilesWithPicture()), FileName);

TEST_P(MediaSourceFileTest, ThePlatformsRenderersPlayIt) {
  MediaGraph graph;
  ASSERT_EQ(graph.Render(MediaPath(media.name).wstring()), S_OK);
  const ComPtr<IBaseFilter> source = graph.FilterOf(kMediaSourceUnderTest);
  ASSERT_TRUE(source) << "the platform found another source";
  LONGLONG duration = 0;
  EXPECT_EQ(graph.seeking->GetDuration(&duration), S_OK);
  EXPECT_NEAR(static_cast<double>(duration), 4.0 * kSecond, 0.15 * kSecond);
  ASSERT_EQ(graph.Seek(3 * kSecond), S_OK);
  ASSERT_HRESULT_SUCCEEDED(graph.control->Run());
  EXPECT_TRUE(graph.Settles());
  EXPECT_GE(graph.Position(), 3 * kSecond);
  EXPECT_TRUE(graph.Completes(8000));
  EXPECT_LE(Milliseconds([&] { graph.control->Stop(); }), kStopLimitMs);
}

// The beginnings of the tones, in times of the file.
std::vector<LONGLONG> Beeps(const RecordingSink::Segment& segment, int rate) {
  std::vector<LONGLONG> beeps;
  LONGLONG silentSince = segment.start - kSecond;
  for (const auto& sample : segment.samples) {
    for (std::size_t i = 0; i < sample.sound.size(); ++i) {
      if (std::abs(sample.sound[i]) < 6000) continue;
      const LONGLONG at = sample.start + static_cast<LONGLONG>(i) * kSecond / rate;
      if (at - silentSince > kSecond / 4) beeps.push_back(at);
      silentSince = at;
    }
  }
  return beeps;
}

TEST_P(MediaSourceFileTest, EveryPictureAndAllSoundArriveInTheirTime) {
  MediaGraph graph;
  graph.AddSinks();
  ASSERT_EQ(graph.Render(MediaPath(media.name).wstring()), S_OK);
  // Without a clock nothing is late, and everything comes as fast as it is decoded.
  graph.graph.As<IMediaFilter>()->SetSyncSource(nullptr);
  ASSERT_HRESULT_SUCCEEDED(graph.control->Run());
  ASSERT_TRUE(graph.Completes(10000));
  if (media.picture) {
    const auto segments = graph.pictures->Segments();
    ASSERT_EQ(segments.size(), 1U);
    EXPECT_EQ(segments[0].start, 0);
    ASSERT_EQ(segments[0].samples.size(), static_cast<std::size_t>(kPictures))
        << segments[0].samples.front().picture << " to " << segments[0].samples.back().picture;
    for (int n = 0; n < kPictures; ++n) {
      const auto& sample = segments[0].samples[static_cast<std::size_t>(n)];
      EXPECT_EQ(sample.picture, n);
      EXPECT_NEAR(static_cast<double>(sample.start), static_cast<double>(n * kFrame), 0.002 * kSecond);
      EXPECT_EQ(sample.discontinuity, n == 0);
    }
  }
  if (media.sound) {
    const auto segments = graph.sounds->Segments();
    ASSERT_EQ(segments.size(), 1U);
    LONGLONG end = segments[0].samples.at(0).start;
    EXPECT_NEAR(static_cast<double>(end), 0, 0.05 * kSecond);
    for (const auto& sample : segments[0].samples) {
      EXPECT_NEAR(static_cast<double>(sample.start - end), 0, 10) << "no gap and nothing twice";
      end = sample.end;
    }
    EXPECT_NEAR(static_cast<double>(end), 4.0 * kSecond, 0.1 * kSecond);
  }
  if (media.picture && media.sound) {
    const std::vector<LONGLONG> beeps = Beeps(graph.sounds->Segments()[0], 44100);
    ASSERT_EQ(beeps.size(), 4U);
    for (int i = 0; i < 4; ++i)
      EXPECT_NEAR(static_cast<double>(beeps[static_cast<std::size_t>(i)]), static_cast<double>(i * kSecond),
                  0.04 * kSecond);
  }
}

// The first picture of the last segment, once it has come; -1 when none does.
int PictureShown(const MediaGraph& graph) {
  int shown = -1;
  PumpUntil(
      [&] {
        const auto segments = graph.pictures->Segments();
        if (segments.empty() || segments.back().samples.empty()) return false;
        shown = segments.back().samples.front().picture;
        return true;
      },
      3000);
  return shown;
}

TEST_P(MediaSourcePictureTest, SeeksReachThePictureInEveryState) {
  MediaGraph graph;
  graph.AddSinks();
  ASSERT_EQ(graph.Render(MediaPath(media.name).wstring()), S_OK);
  const auto check = [&](int picture, const char* state) {
    // In the middle of the picture, and at its very beginning.
    for (const LONGLONG within : {kFrame / 2, 0LL}) {
      graph.pictures->Clear();
      ASSERT_EQ(graph.Seek(picture * kFrame + within), S_OK) << state;
      if (std::string(state) == "stopped") {
        ASSERT_HRESULT_SUCCEEDED(graph.control->Pause());
      }
      EXPECT_EQ(PictureShown(graph), picture) << state << ", " << within;
      if (std::string(state) == "stopped") graph.control->Stop();
    }
  };
  for (const int picture : {60, 10, 0, 99, 49, 50, 51}) check(picture, "stopped");
  ASSERT_HRESULT_SUCCEEDED(graph.control->Pause());
  ASSERT_TRUE(graph.Settles());
  for (const int picture : {75, 3, 0, 98, 49, 50, 26}) check(picture, "paused");
  ASSERT_HRESULT_SUCCEEDED(graph.control->Run());
  for (const int picture : {30, 88, 1, 51, 12, 11, 97}) check(picture, "running");
}

TEST_F(MediaSourceTest, SoundIsExactToTheSample) {
  for (const char* name : {"ramp.wav", "ramp.flac"}) {
    MediaGraph graph;
    graph.AddSinks();
    ASSERT_EQ(graph.Render(MediaPath(name).wstring()), S_OK);
    for (const LONGLONG to : {kSecond, 2 * kSecond + 1234567, 0LL, 3 * kSecond + 1}) {
      graph.sounds->Clear();
      ASSERT_EQ(graph.Seek(to), S_OK);
      ASSERT_HRESULT_SUCCEEDED(graph.control->Pause());
      ASSERT_TRUE(graph.Settles());
      const auto segments = graph.sounds->Segments();
      const auto& sample = segments.back().samples.at(0);
      const LONGLONG wanted = to * 44100 / kSecond;
      EXPECT_NEAR(static_cast<double>(sample.sound.at(0)), static_cast<double>(wanted % 20000 - 10000), 1)
          << name << " at " << to;
      graph.control->Stop();
    }
  }
}

TEST_F(MediaSourceTest, ASeekOfTheGraphIsDoneOnceAndFlushesBothPins) {
  MediaGraph graph;
  graph.AddSinks();
  ASSERT_EQ(graph.Render(MediaPath("h264_aac.mp4").wstring()), S_OK);
  ASSERT_HRESULT_SUCCEEDED(graph.control->Pause());
  ASSERT_TRUE(graph.Settles());
  for (int i = 0; i < 2; ++i) {  // the same place twice: two seeks
    graph.pictures->Clear();
    graph.sounds->Clear();
    ASSERT_EQ(graph.Seek(2 * kSecond), S_OK);
    ASSERT_TRUE(graph.Settles());
    EXPECT_EQ(graph.pictures->Flushes(), 1);
    EXPECT_EQ(graph.sounds->Flushes(), 1);
    ASSERT_EQ(graph.pictures->Segments().size(), 1U);
    EXPECT_EQ(graph.pictures->Segments()[0].start, 2 * kSecond);
    EXPECT_EQ(graph.sounds->Segments()[0].start, 2 * kSecond);
    EXPECT_NEAR(static_cast<double>(graph.sounds->Segments()[0].samples.at(0).start), 2.0 * kSecond, 10);
    EXPECT_TRUE(graph.pictures->Segments()[0].samples.at(0).discontinuity);
  }
}

TEST_F(MediaSourceTest, StopPauseAndReleaseAreQuickInEveryState) {
  for (const char* name : {"mpeg4_mp3.avi", "h264_aac.mp4", "sound.mp3"}) {
    MediaGraph graph;
    ASSERT_EQ(graph.Render(MediaPath(name).wstring()), S_OK);
    for (int i = 0; i < 5; ++i) {
      graph.control->Run();
      PumpFor(static_cast<DWORD>(i * 40));
      EXPECT_LE(Milliseconds([&] { graph.control->Pause(); }), kStopLimitMs);
      if (i % 2 == 0) {
        EXPECT_TRUE(graph.Settles());
      }
      EXPECT_LE(Milliseconds([&] { graph.control->Stop(); }), kStopLimitMs) << name;
    }
    // While the renderers wait for the end of what they have.
    ASSERT_EQ(graph.Seek(4 * kSecond - kSecond / 8), S_OK);
    graph.control->Run();
    PumpFor(200);
    EXPECT_LE(Milliseconds([&] { graph.control->Stop(); }), kStopLimitMs) << name;
    graph.control->Run();
    ULONG left = 1;
    EXPECT_LE(Milliseconds([&] { left = graph.Release(); }), 2 * kStopLimitMs);
    EXPECT_EQ(left, 0U);
  }
}

TEST_F(MediaSourceTest, AReceiverMayStopItFromItsStream) {
  // As a renderer does that gives up the last reference to the graph when it is told the end.
  MediaGraph graph;
  graph.AddSinks();
  ASSERT_EQ(graph.Render(MediaPath("sound.mp3").wstring()), S_OK);
  std::atomic<bool> stopped = false;
  graph.sounds->atEnd = [&, source = graph.FilterOf(kMediaSourceUnderTest)] {
    source->Stop();
    stopped = true;
  };
  ASSERT_EQ(graph.Seek(3 * kSecond), S_OK);
  graph.control->Run();
  EXPECT_TRUE(PumpUntil([&] { return stopped.load(); }));
  graph.sounds->atEnd = nullptr;
  EXPECT_EQ(graph.Release(), 0U);
}

// Calls an exported function without parameters.
HRESULT Call(HMODULE module, const char* name) {
  using Function = HRESULT (*)();
  // By way of void*, for the platform's own pointer type stands for any function.
  return reinterpret_cast<Function>(reinterpret_cast<void*>(::GetProcAddress(module, name)))();
}

TEST_F(MediaSourceTest, ItsLastReleaseEndsIt) {
  const HMODULE module = ::LoadLibraryA(QUORVEX_BIN "/qvmedia.dll");
  const auto canUnload = [module] { return Call(module, "DllCanUnloadNow"); };
  if (canUnload() != S_OK) GTEST_SKIP() << "an earlier test of this process left a source with the platform";
  ComPtr<IBaseFilter> source;
  ASSERT_EQ(::CoCreateInstance(kMediaSourceUnderTest, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IBaseFilter),
                               source.ReceiveVoid()),
            S_OK);
  EXPECT_EQ(canUnload(), S_FALSE);
  ASSERT_EQ(source.As<IFileSourceFilter>()->Load(MediaPath("mpeg4_mp3.avi").c_str(), nullptr), S_OK);
  EXPECT_NE(source.As<IFileSourceFilter>()->Load(MediaPath("sound.mp3").c_str(), nullptr), S_OK);
  EXPECT_EQ(source.Detach()->Release(), 0U);
  EXPECT_EQ(canUnload(), S_OK);
  // Each call answers with a factory of its own.
  const auto lock = [](BOOL locked) {
    ComPtr<IClassFactory> factory;
    ::CoGetClassObject(kMediaSourceUnderTest, CLSCTX_INPROC_SERVER, nullptr, __uuidof(IClassFactory),
                       factory.ReceiveVoid());
    EXPECT_EQ(factory->LockServer(locked), S_OK);
    EXPECT_EQ(factory.Detach()->Release(), 0U);
  };
  lock(TRUE);
  EXPECT_EQ(canUnload(), S_FALSE);
  lock(FALSE);
  EXPECT_EQ(canUnload(), S_OK);
}

TEST_F(MediaSourceTest, ASlowRendererGetsFewerPicturesAndKeepsUp) {
  MediaGraph graph;
  graph.AddSinks();
  ASSERT_EQ(graph.Render(MediaPath("mpeg2_mp2.ts").wstring()), S_OK);
  graph.pictures->SlowDown(130);
  graph.control->Run();
  ASSERT_TRUE(graph.Completes(8000));
  const auto samples = graph.pictures->Segments()[0].samples;
  EXPECT_LT(samples.size(), 50U) << "100 pictures of 0.13 s would take 13 s";
  EXPECT_GT(samples.size(), 10U);
  EXPECT_GT(samples.back().picture, 85);
}

TEST_F(MediaSourceTest, APictureThatLastsLongIsThereInItsMiddleAndAtTheEnd) {
  MediaGraph graph;
  graph.AddSinks();
  ASSERT_EQ(graph.Render(MediaPath("slides.mkv").wstring()), S_OK);
  struct Case {
    LONGLONG at;
    int picture;
  };
  for (const Case& test : {Case{kSecond / 2, 0}, Case{kSecond + kSecond / 2, 1}, Case{2 * kSecond, 2},
                           Case{29 * kSecond / 10, 2}, Case{3 * kSecond + kSecond / 2, 3}}) {
    graph.pictures->Clear();
    ASSERT_EQ(graph.Seek(test.at), S_OK);
    graph.control->Pause();
    EXPECT_EQ(PictureShown(graph), test.picture) << test.at;
    graph.control->Stop();
  }
}

// What is wrong with a file shows in RenderFile's answer.
TEST_F(MediaSourceTest, FilesThatCannotBePlayedAreRefused) {
  const TempFolder folder;
  std::string mp4;
  {
    std::ifstream file(MediaPath("h264_aac.mp4"), std::ios::binary);
    mp4.assign(std::istreambuf_iterator<char>(file), {});
  }
  const std::string text(5000, 'x');
  for (const std::string& path :
       {folder.Write("text.avi", text), folder.Write("text.mp3", text), folder.Write("nothing.avi", ""),
        folder.Write("headless.mp4", mp4.substr(0, mp4.size() / 2)), folder.Path("missing.avi")}) {
    MediaGraph graph;
    const HRESULT result = graph.Render(std::filesystem::path(path).wstring());
    EXPECT_TRUE(FAILED(result)) << path;
    EXPECT_FALSE(graph.FilterOf(kMediaSourceUnderTest)) << path;
    RecordProperty(std::filesystem::path(path).filename().string(), std::to_string(result));
    ComPtr<IFileSourceFilter> source;
    ASSERT_EQ(::CoCreateInstance(kMediaSourceUnderTest, nullptr, CLSCTX_INPROC_SERVER,
                                 __uuidof(IFileSourceFilter), source.ReceiveVoid()),
              S_OK);
    const HRESULT direct = source->Load(std::filesystem::path(path).c_str(), nullptr);
    const bool missing = path.find("missing") != std::string::npos;
    EXPECT_TRUE(missing ? direct == HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND)
                        : direct == VFW_E_UNKNOWN_FILE_TYPE || direct == VFW_E_UNSUPPORTED_STREAM)
        << path << ": " << std::hex << direct;
    EXPECT_EQ(source.Detach()->Release(), 0U);
  }
}

TEST_F(MediaSourceTest, DamagedAndCutFilesPlayToTheirEnd) {
  const TempFolder folder;
  for (const char* name : {"mpeg1_mp2.mpg", "mpeg4_mp3.avi", "h264_aac.ts", "h264_vorbis.mkv"}) {
    std::ifstream file(MediaPath(name), std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(file), {}};
    bytes.resize(bytes.size() * 9 / 10);
    for (std::size_t at = bytes.size() / 3; at < bytes.size() / 2; at += 97)
      bytes[at] = static_cast<char>(at * 31);
    const std::filesystem::path path = folder.Write(name, bytes);
    MediaGraph graph;
    graph.AddSinks();
    ASSERT_EQ(graph.Render(path.wstring()), S_OK) << name;
    graph.graph.As<IMediaFilter>()->SetSyncSource(nullptr);
    graph.control->Run();
    EXPECT_TRUE(graph.Completes(10000)) << name;
    EXPECT_GT(graph.pictures->Segments().back().samples.size(), 30U) << name;
    ASSERT_EQ(graph.Seek(2 * kSecond), S_OK);
    EXPECT_TRUE(graph.Completes(10000)) << name;
  }
}

// Recordings that were cut or put behind each other with `copy /b`.
TEST_F(MediaSourceTest, JoinedFilesGoOnWhereTheirTimeStampsBeginAnewOrLeap) {
  const TempFolder folder;
  const std::pair<const char*, const char*> joints[] = {{"mpeg2_ac3.vob", "mpeg2_ac3.vob"},
                                                        {"mpeg2_mp2.ts", "mpeg2_mp2.ts"},
                                                        {"mpeg2_mp2.ts", "later.ts"},
                                                        {"later.ts", "mpeg2_mp2.ts"}};
  for (const auto& [first, second] : joints) {
    SCOPED_TRACE(std::string(first) + " and " + second);
    std::string bytes;
    for (const char* part : {first, second}) {
      std::ifstream file(MediaPath(part), std::ios::binary);
      bytes.append(std::istreambuf_iterator<char>(file), {});
    }
    MediaGraph graph;
    graph.AddSinks();
    ASSERT_EQ(graph.Render(std::filesystem::path(folder.Write(first, bytes)).wstring()), S_OK);
    graph.graph.As<IMediaFilter>()->SetSyncSource(nullptr);
    ASSERT_HRESULT_SUCCEEDED(graph.control->Run());
    ASSERT_TRUE(graph.Completes(10000));
    const auto pictures = graph.pictures->Segments().back().samples;
    EXPECT_NEAR(static_cast<double>(pictures.size()), 2 * kPictures, 4);
    LONGLONG last = -kFrame;
    for (const auto& sample : pictures) {
      EXPECT_NEAR(static_cast<double>(sample.start), static_cast<double>(last + kFrame), 0.3 * kSecond);
      last = sample.start;
    }
    EXPECT_NEAR(static_cast<double>(last), 8.0 * kSecond, 0.3 * kSecond);
    const std::vector<LONGLONG> beeps = Beeps(graph.sounds->Segments()[0], 44100);
    EXPECT_EQ(beeps.size(), 8U);
    // Picture n shows n, and every 25th has a beep: also behind the joint.
    for (const LONGLONG beep : beeps) {
      const auto shown = std::min_element(
          pictures.begin(), pictures.end(),
          [&](const auto& a, const auto& b) { return std::abs(a.start - beep) < std::abs(b.start - beep); });
      const int apart = shown->picture % 25;
      EXPECT_LE(std::min(apart, 25 - apart), 1) << "at " << beep;
    }
  }
}

TEST_F(MediaSourceTest, FileNamesMayBeInAnyLetters) {
  const TempFolder folder;
  for (const wchar_t* name : {L"Пример ビデオ é.avi", L"no extension", L"100% %03d # ?.avi"}) {
    std::wstring legal = name;
    std::replace(legal.begin(), legal.end(), L'?', L'!');
    const std::filesystem::path path = std::filesystem::path(folder.Path("")) / legal;
    std::filesystem::copy_file(MediaPath("mpeg4_mp3.avi"), path);
    MediaGraph graph;
    EXPECT_EQ(graph.Render(path.wstring()), S_OK) << path;
    const ComPtr<IBaseFilter> source = graph.FilterOf(kMediaSourceUnderTest);
    ASSERT_TRUE(source);
    LPOLESTR current = nullptr;
    EXPECT_EQ(source.As<IFileSourceFilter>()->GetCurFile(&current, nullptr), S_OK);
    EXPECT_EQ(path.wstring(), current);
    ::CoTaskMemFree(current);
  }
}

std::wstring SourceOfAvi() {
  wchar_t text[64] = L"";
  DWORD bytes = sizeof(text);
  ::RegGetValueW(
      HKEY_CLASSES_ROOT,
      L"Media Type\\{e436eb83-524f-11ce-9f53-0020af0ba770}\\{e436eb88-524f-11ce-9f53-0020af0ba770}",
      L"Source Filter", RRF_RT_REG_SZ, nullptr, static_cast<void*>(text), &bytes);
  return static_cast<const wchar_t*>(text);
}

TEST_F(MediaSourceTest, UnregisteringPutsBackWhatWasThere) {
  const HMODULE module = ::LoadLibraryA(QUORVEX_BIN "/qvmedia.dll");
  ASSERT_NE(module, nullptr);
  const auto call = [module](const char* name) { return Call(module, name); };
  const std::wstring ours = SourceOfAvi();
  EXPECT_EQ(call("DllRegisterServer"), S_OK) << "a second time";
  EXPECT_EQ(call("DllUnregisterServer"), S_OK);
  EXPECT_EQ(SourceOfAvi(), L"{e436ebb5-524f-11ce-9f53-0020af0ba770}") << "the platform's own source";
  HKEY key = nullptr;
  EXPECT_EQ(::RegOpenKeyW(HKEY_CLASSES_ROOT, L"Media Type\\Extensions\\.mp3", &key), ERROR_SUCCESS);
  ::RegCloseKey(key);
  EXPECT_EQ(call("DllRegisterServer"), S_OK);
  EXPECT_EQ(SourceOfAvi(), ours);
  ::FreeLibrary(module);
}

TEST_F(MediaSourceTest, PlaysToTheStopPositionAndNoFurther) {
  MediaGraph graph;
  graph.AddSinks();
  ASSERT_EQ(graph.Render(MediaPath("mpeg4_mp3.avi").wstring()), S_OK);
  graph.graph.As<IMediaFilter>()->SetSyncSource(nullptr);
  LONGLONG from = 10 * kFrame;
  LONGLONG to = 30 * kFrame;
  ASSERT_EQ(
      graph.seeking->SetPositions(&from, AM_SEEKING_AbsolutePositioning, &to, AM_SEEKING_AbsolutePositioning),
      S_OK);
  LONGLONG stop = 0;
  EXPECT_EQ(graph.seeking->GetStopPosition(&stop), S_OK);
  EXPECT_EQ(stop, to);
  ASSERT_HRESULT_SUCCEEDED(graph.control->Run());
  ASSERT_TRUE(graph.Completes(5000));
  const auto pictures = graph.pictures->Segments();
  EXPECT_EQ(pictures.back().samples.front().picture, 10);
  EXPECT_EQ(pictures.back().samples.back().picture, 29);
  EXPECT_NEAR(static_cast<double>(graph.sounds->Segments().back().samples.back().end),
              static_cast<double>(to), 1000);
}

TEST_F(MediaSourceTest, ASeekMayBeRelativeOrMoveTheStopPositionOnly) {
  MediaGraph graph;
  graph.AddSinks();
  ASSERT_EQ(graph.Render(MediaPath("mpeg4_mp3.avi").wstring()), S_OK);
  ASSERT_EQ(graph.Seek(kSecond), S_OK);
  ASSERT_HRESULT_SUCCEEDED(graph.control->Pause());
  ASSERT_TRUE(graph.Settles());
  graph.pictures->Clear();
  LONGLONG further = kSecond;
  ASSERT_EQ(graph.seeking->SetPositions(&further, AM_SEEKING_RelativePositioning, nullptr, 0), S_OK);
  EXPECT_EQ(PictureShown(graph), 50);
  EXPECT_EQ(graph.sounds->Segments().back().start, 2 * kSecond);
  ASSERT_HRESULT_SUCCEEDED(graph.control->Run());
  ASSERT_TRUE(PumpUntil([&] { return graph.Position() > 26 * kSecond / 10; }));
  graph.pictures->Clear();
  LONGLONG stop = 35 * kSecond / 10;
  const LONGLONG before = graph.Position();
  ASSERT_EQ(graph.seeking->SetPositions(nullptr, 0, &stop, AM_SEEKING_AbsolutePositioning), S_OK);
  EXPECT_LT(graph.Position(), before + kSecond / 2);
  EXPECT_GT(PictureShown(graph), 55) << "it goes on where it was";
  ASSERT_TRUE(graph.Completes(5000));
  const auto samples = graph.pictures->Segments().back().samples;
  EXPECT_EQ(samples.back().picture, 87);
  for (const auto& sample : samples)
    EXPECT_NEAR(static_cast<double>(sample.start), static_cast<double>(sample.picture * kFrame),
                0.002 * kSecond);
}

TEST_F(MediaSourceTest, SoundOfAnotherFormatThanItsOwnIsRefused) {
  MediaGraph graph;
  ASSERT_EQ(graph.Render(MediaPath("mpeg4_mp3.avi").wstring()), S_OK);
  ComPtr<IPin> pin;
  ASSERT_EQ(graph.FilterOf(kMediaSourceUnderTest)->FindPin(L"Sound", pin.Receive()), S_OK);
  EXPECT_EQ(pin->QueryAccept(&MediaType::Pcm16(2, 44100).Get()), S_OK);
  EXPECT_EQ(pin->QueryAccept(&MediaType::Pcm16(1, 44100).Get()), S_FALSE);
  EXPECT_EQ(pin->QueryAccept(&MediaType::Pcm16(2, 11025).Get()), S_FALSE);
}

}  // namespace
}  // namespace quorvex
