// Recordings of the virtual card and the line input, made as a capture application makes them, and what
// becomes of the files.
#include <gtest/gtest.h>
#include <windows.h>

#include <dshow.h>
#include <evcode.h>
#include <vfwmsgs.h>

#include "base/capture_recovery_interface.h"
#include "platform/avi/avi_extent.h"
#include "platform/avi/avi_movie.h"
#include "platform/tv/capture_file.h"
#include "platform/tv/capture_type.h"
#include "platform/tv/journal_keeper.h"
#include "tests/support/card_graph.h"
#include "tests/support/com_test.h"
#include "tests/support/pump.h"
#include "tests/support/small_disk.h"
#include "tests/support/temp_folder.h"

namespace quorvex {
namespace {

constexpr std::uint64_t kMegabyte = 1ULL << 20;

std::wstring Wide(const std::string& text) { return {text.begin(), text.end()}; }

struct Builder {
  Builder() {
    ::CoCreateInstance(CLSID_CaptureGraphBuilder, nullptr, CLSCTX_INPROC_SERVER,
                       __uuidof(ICaptureGraphBuilder), builder.ReceiveVoid());
  }
  [[nodiscard]] HRESULT Allocate(const std::string& path, std::uint64_t bytes) const {
    return builder->AllocCapFile(Wide(path).c_str(), bytes);
  }
  [[nodiscard]] HRESULT Copy(const std::string& from, const std::string& to, bool escape = false,
                             IAMCopyCaptureFileProgress* progress = nullptr) const {
    std::wstring source = Wide(from);
    std::wstring target = Wide(to);
    return builder->CopyCaptureFile(source.data(), target.data(), escape ? TRUE : FALSE, progress);
  }
  HRESULT Recover(const std::string& path, LONGLONG& length) const {
    const auto recovery = builder.As<ICaptureRecovery>();
    return recovery ? recovery->Recover(Wide(path).c_str(), &length) : E_NOINTERFACE;
  }

  ComPtr<ICaptureGraphBuilder> builder;
};

// A recording graph of the player's kind: the card's Capture pin and the line input into one file.
class RecordingGraph : public CardGraph, public Builder {
 public:
  explicit RecordingGraph(const std::string& file) {
    EXPECT_EQ(builder->SetFiltergraph(graph.Get()), S_OK);
    SetFormat({PixelLayout::kYuy2, {160, 120}, kSecond * 1001 / 30000});
    line = FilterNamed(CLSID_AudioInputDeviceCategory, kLineInputName);
    if (line) graph->AddFilter(line.Get(), L"line");
    result = builder->SetOutputFileName(&MEDIASUBTYPE_Avi, Wide(file).c_str(), mux.Receive(), sink.Receive());
  }

  void SetFormat(const CaptureFormat& format) const {
    const auto config = Pin(PIN_CATEGORY_CAPTURE).As<IAMStreamConfig>();
    MediaType type = TypeOf(format);
    EXPECT_EQ(config->SetFormat(const_cast<AM_MEDIA_TYPE*>(&type.Get())), S_OK);
  }

  HRESULT Render() const {
    const HRESULT video = builder->RenderStream(&PIN_CATEGORY_CAPTURE, card.Get(), nullptr, mux.Get());
    const HRESULT audio = builder->RenderStream(&PIN_CATEGORY_CAPTURE, line.Get(), nullptr, mux.Get());
    return FAILED(video) ? video : audio;
  }

  [[nodiscard]] LONG Frames() const {
    LONG count = -1;
    mux.As<IAMDroppedFrames>()->GetNumNotDropped(&count);
    return count;
  }
  [[nodiscard]] LONG Dropped() const {
    LONG count = -1;
    mux.As<IAMDroppedFrames>()->GetNumDropped(&count);
    return count;
  }
  [[nodiscard]] LONGLONG Length() const {
    LONGLONG length = -1;
    mux.As<IMediaSeeking>()->GetCurrentPosition(&length);
    return length;
  }

  // Records until so many pictures are in the file.
  void Record(LONG frames) const {
    Run();
    EXPECT_TRUE(PumpUntil([&] { return Frames() >= frames; }, 20000)) << Frames();
    EXPECT_EQ(control->Stop(), S_OK);
  }

  ComPtr<IBaseFilter> line;
  ComPtr<IBaseFilter> mux;
  ComPtr<IFileSinkFilter> sink;
  HRESULT result = E_FAIL;
};

// What a recording's file holds, chunk by chunk.
struct ReadMovie {
  explicit ReadMovie(const std::string& path) {
    CaptureFile file;
    if (FAILED(file.Open(Wide(path), CaptureFile::Mode::kRead))) return;
    size = file.Size();
    movieBytes = MovieBytes(file).value_or(0);
    Bytes bytes(movieBytes);
    if (movieBytes == 0 || file.Read(0, bytes) != bytes.size()) return;
    const auto at = [&](const char* name) {
      return static_cast<std::size_t>(std::search(bytes.begin(), bytes.end(), name, name + 4) -
                                      bytes.begin());
    };
    const std::size_t strh = at("strh");
    rate = {Number32(bytes, strh + 32), Number32(bytes, strh + 28)};
    for (std::size_t place = at("movi") + 4; place + 8 < bytes.size();) {
      const FourCc name = Number32(bytes, place);
      const std::uint32_t length = Number32(bytes, place + 4);
      if (name == Letters("00dc")) Note(bytes, place + 8, length);
      if (name == Letters("01wb")) soundBytes += length;
      place += 8 + Even(length);
    }
  }

  void Note(const Bytes& bytes, std::size_t place, std::uint32_t length) {
    if (length == 0) {
      pictures.push_back(-1);
      return;
    }
    // Of YUY2 only the luminance counts: spread it as a PictureView wants it.
    constexpr int kWidth = 160;
    constexpr int kHeight = 120;
    Bytes pixels(static_cast<std::size_t>(kWidth) * kHeight * 4);
    for (std::size_t i = 0; i < pixels.size() / 4; ++i) pixels[i * 4 + 1] = bytes.at(place + i * 2);
    const auto marks = ReadDiscMarks({pixels.data(), kWidth * 4L, kWidth, kHeight});
    pictures.push_back(marks ? marks->picture : -2);
  }

  std::uint64_t size = 0;
  std::uint64_t movieBytes = 0;
  UnitRate rate;
  std::vector<int> pictures;  // -1: a lost one
  std::uint64_t soundBytes = 0;
};

void ExpectInOrder(const std::vector<int>& pictures) {
  ASSERT_FALSE(pictures.empty());
  for (std::size_t i = 0; i < pictures.size(); ++i) {
    EXPECT_TRUE(pictures[i] == pictures[0] + static_cast<int>(i) || pictures[i] == -1)
        << i << ": " << pictures[i];
  }
}

bool Exists(const std::string& path) { return ::GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES; }

class TvRecordingTest : public ComTest {
 protected:
  TempFolder folder;
};

TEST_F(TvRecordingTest, WhatIsHeldBackIsNotRecorded) {
  const PluggedCards cards;
  const std::string path = folder.Path("a.avi");
  RecordingGraph recording(path);
  ASSERT_EQ(recording.Render(), S_OK);
  REFERENCE_TIME never = MAXLONGLONG;
  ICaptureGraphBuilder* const builder = recording.builder.Get();
  EXPECT_EQ(builder->ControlStream(&PIN_CATEGORY_CAPTURE, nullptr, &never, nullptr, 0, 0), S_OK);
  recording.Run();
  PumpFor(700);
  EXPECT_EQ(recording.Frames(), 0);
  EXPECT_EQ(builder->ControlStream(&PIN_CATEGORY_CAPTURE, nullptr, nullptr, &never, 0, 0), S_OK);
  EXPECT_TRUE(PumpUntil([&] { return recording.Frames() >= 20; }, 10000));
  EXPECT_EQ(recording.control->Stop(), S_OK);
  const ReadMovie movie(path);
  ExpectInOrder(movie.pictures);
  EXPECT_GT(movie.pictures.front(), 0) << "those before were held back";
  EXPECT_EQ(movie.size, movie.movieBytes) << "a file of no size beforehand ends with the movie";
}

// Armed and then cancelled: the recording before is perhaps not saved yet.
TEST_F(TvRecordingTest, ARunWithoutSamplesLeavesTheFileAsItWas) {
  const PluggedCards cards;
  const std::string path = folder.Path("a.avi");
  ASSERT_EQ(Builder().Allocate(path, 4 * kMegabyte), S_OK);
  RecordingGraph recording(path);
  ASSERT_EQ(recording.Render(), S_OK);
  recording.Record(20);
  const std::string before = folder.Read("a.avi");
  REFERENCE_TIME never = MAXLONGLONG;
  EXPECT_EQ(recording.builder->ControlStream(&PIN_CATEGORY_CAPTURE, nullptr, &never, nullptr, 0, 0), S_OK);
  recording.Run();
  PumpFor(700);
  EXPECT_FALSE(Exists(path + ".journal"));
  EXPECT_EQ(recording.control->Stop(), S_OK);
  EXPECT_TRUE(folder.Read("a.avi") == before);
  CaptureFile other;
  EXPECT_EQ(other.Open(Wide(path), CaptureFile::Mode::kOwn), S_OK) << "it is closed";
}

TEST_F(TvRecordingTest, WithoutAJournalItIsRecordedAllTheSame) {
  const PluggedCards cards;
  const std::string path = folder.Path("a.avi");
  ASSERT_TRUE(::CreateDirectoryA((path + ".journal").c_str(), nullptr));
  RecordingGraph recording(path);
  ASSERT_EQ(recording.Render(), S_OK);
  recording.Record(20);
  ExpectInOrder(ReadMovie(path).pictures);
  EXPECT_TRUE(Exists(path + ".journal")) << "not ours";
}

TEST_F(TvRecordingTest, PicturesThatTheCardLostLeaveGaps) {
  const PluggedCards cards;
  const std::string path = folder.Path("a.avi");
  RecordingGraph recording(path);
  ASSERT_EQ(recording.Render(), S_OK);
  cards->slowFrames = 80;
  recording.Record(20);
  const ReadMovie movie(path);
  ExpectInOrder(movie.pictures);
  EXPECT_GE(recording.Dropped(), 15);
  const double seconds = static_cast<double>(movie.pictures.size()) * 1001 / 30000;
  EXPECT_NEAR(static_cast<double>(movie.soundBytes) / (44100 * 4), seconds, 1);
}

TEST_F(TvRecordingTest, ARateThatIsSetLateIsTheFilesRate) {
  const PluggedCards cards;
  const std::string path = folder.Path("a.avi");
  RecordingGraph recording(path);
  ASSERT_EQ(recording.Render(), S_OK);
  recording.SetFormat({PixelLayout::kYuy2, {160, 120}, kSecond / 15});
  recording.Record(20);
  const ReadMovie movie(path);
  EXPECT_EQ(movie.rate, (UnitRate{15, 1}));
  ExpectInOrder(movie.pictures);
}

TEST_F(TvRecordingTest, FilesThatCannotBeWrittenAreRefused) {
  const PluggedCards cards;
  const std::string readOnly = folder.Write("read-only.avi", "x");
  ::SetFileAttributesA(readOnly.c_str(), FILE_ATTRIBUTE_READONLY);
  const std::string used = folder.Write("used.avi", "0123456789");
  CaptureFile user;
  ASSERT_EQ(user.Open(Wide(used), CaptureFile::Mode::kOwn), S_OK);
  const Builder builder;
  for (const std::string& path :
       {readOnly, used, folder.Path("none\\a.avi"), folder.Path(""), std::string()}) {
    RecordingGraph recording(path);
    EXPECT_TRUE(FAILED(recording.result)) << path;
    EXPECT_FALSE(recording.mux) << path;
    EXPECT_EQ(FiltersOf(*recording.graph.Get()).size(), 2U) << "nothing is left in the graph: " << path;
    EXPECT_TRUE(FAILED(builder.Allocate(path, kMegabyte))) << path;
  }
  user.Close();
  EXPECT_EQ(folder.Read("used.avi"), "0123456789");
  ::SetFileAttributesA(readOnly.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(TvRecordingTest, SpaceIsReallyTaken) {
  const Builder builder;
  const std::string path = folder.Path("a.avi");
  const auto taken = [&] {
    CaptureFile file;
    FILE_STANDARD_INFO info{};
    EXPECT_EQ(file.Open(Wide(path), CaptureFile::Mode::kRead), S_OK);
    EXPECT_TRUE(::GetFileInformationByHandleEx(file.Handle(), FileStandardInfo, &info, sizeof info));
    EXPECT_GE(info.AllocationSize.QuadPart, info.EndOfFile.QuadPart);
    return static_cast<std::uint64_t>(info.EndOfFile.QuadPart);
  };
  EXPECT_EQ(builder.Allocate(path, 0), E_INVALIDARG);
  EXPECT_FALSE(Exists(path));
  EXPECT_EQ(builder.Allocate(path, 3 * kMegabyte + 7), S_OK);
  EXPECT_EQ(taken(), 3 * kMegabyte + 7);
  folder.Write("a.avi", std::string(100'000, 'x'));
  EXPECT_EQ(builder.Allocate(path, 5 * kMegabyte), S_OK);
  EXPECT_EQ(taken(), 5 * kMegabyte);
  EXPECT_EQ(folder.Read("a.avi").substr(0, 100'001), std::string(100'000, 'x') + '\0')
      << "what was there stays";
  EXPECT_EQ(builder.Allocate(path, kMegabyte), S_OK);
  EXPECT_EQ(taken(), kMegabyte);
  // More than any disk has: all is as it was.
  EXPECT_EQ(builder.Allocate(path, 1ULL << 56), kDiskFull);
  EXPECT_EQ(taken(), kMegabyte);
  EXPECT_EQ(builder.Allocate(folder.Path("b.avi"), 1ULL << 56), kDiskFull);
  EXPECT_FALSE(Exists(folder.Path("b.avi")));
}

// Told the progress of a copy; presses Esc from a percentage on, and lets it go at last.
class Impatient final : public IAMCopyCaptureFileProgress {
 public:
  ~Impatient() { ::keybd_event(VK_ESCAPE, 0, KEYEVENTF_KEYUP, 0); }
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE Progress(int percent) override {
    told = percent;
    if (percent >= 20) ::keybd_event(VK_ESCAPE, 0, 0, 0);
    return S_OK;
  }

  int told = 0;
};

TEST_F(TvRecordingTest, OnlyTheMovieIsCopied) {
  const PluggedCards cards;
  const std::string path = folder.Path("a.avi");
  ASSERT_EQ(Builder().Allocate(path, 20 * kMegabyte), S_OK);
  RecordingGraph recording(path);
  ASSERT_EQ(recording.Render(), S_OK);
  recording.Record(40);
  const std::string copy = folder.Write("copy.avi", "what was there");
  folder.Write("copy.avi.part", "the user's");
  const Builder builder;
  // Nothing is changed by copies that do not come about.
  EXPECT_EQ(builder.Copy(folder.Path("none.avi"), copy), E_INVALIDARG);
  EXPECT_EQ(builder.Copy(path, path), E_INVALIDARG);
  EXPECT_EQ(builder.Copy(folder.Write("text.avi", "RIFF, or not"), copy), E_FAIL);
  EXPECT_EQ(builder.Copy(path, folder.Path("none\\copy.avi")), E_INVALIDARG);
  EXPECT_EQ(folder.Read("copy.avi"), "what was there");

  EXPECT_EQ(builder.Copy(path, copy), S_OK);
  const ReadMovie whole(path);
  const ReadMovie copied(copy);
  EXPECT_EQ(copied.size, whole.movieBytes);
  EXPECT_EQ(copied.pictures, whole.pictures);
  EXPECT_EQ(folder.Read("copy.avi.part"), "the user's");
  EXPECT_FALSE(Exists(copy + ".part2"));

  Impatient user;
  EXPECT_EQ(builder.Copy(path, folder.Path("half.avi"), true, &user), S_FALSE);
  EXPECT_LT(user.told, 60);
  EXPECT_FALSE(Exists(folder.Path("half.avi")));
  EXPECT_FALSE(Exists(folder.Path("half.avi.part")));
  EXPECT_EQ(builder.Copy(path, copy, false, &user), S_OK) << "Esc was not allowed";
  EXPECT_EQ(user.told, 100);
}

// How the cut off movie is finished, unit tests and killed players show.
TEST_F(TvRecordingTest, AFullDiskEndsTheRecordingAndItIsWhole) {
  const PluggedCards cards;
  RecordingGraph recording(folder.Path("a.avi"));
  const auto writer = recording.sink;
  recording.graph->RemoveFilter(ComPtr<IFileSinkFilter>(writer).As<IBaseFilter>().Get());
  const auto disk = ComPtr<SmallDisk>::Attach(new SmallDisk(kMegabyte));
  recording.graph->AddFilter(disk.Get(), L"disk");
  ASSERT_EQ(recording.graph->ConnectDirect(FindPin(*recording.mux.Get(), PINDIR_OUTPUT, nullptr).Get(),
                                           FindPin(*disk.Get(), PINDIR_INPUT, nullptr).Get(), nullptr),
            S_OK);
  ASSERT_EQ(recording.Render(), S_OK);
  recording.Run();
  long code = 0;
  LONG_PTR why = 0;
  LONG_PTR other = 0;
  EXPECT_TRUE(PumpUntil(
      [&] { return recording.events->GetEvent(&code, &why, &other, 0) == S_OK && code == EC_ERRORABORT; },
      10000));
  EXPECT_EQ(static_cast<HRESULT>(why), kDiskFull);
  EXPECT_EQ(recording.control->Stop(), S_OK);
  EXPECT_TRUE(disk->committed);
  folder.Write("a.avi", {disk->bytes.begin(), disk->bytes.end()});
  const ReadMovie movie(folder.Path("a.avi"));
  EXPECT_EQ(movie.movieBytes, disk->bytes.size());
  EXPECT_GT(movie.movieBytes, kMegabyte - 100'000);
  ExpectInOrder(movie.pictures);
}

std::optional<JournalNote> NoteIn(const std::string& bytes) {
  return ReadJournal(Bytes(bytes.begin(), bytes.end()));
}

TEST_F(TvRecordingTest, TheJournalTellsWhatAPowerCutWouldLeave) {
  AviMovie movie;
  movie.streams.resize(1);
  std::atomic<int> asked{0};
  std::atomic<int> allowed{0};
  JournalKeeper keeper([&] {
    const int mine = ++asked;
    while (allowed < mine) ::Sleep(1);
    return mine != 2;
  });
  // Notes until one tells this as safe.
  std::uint64_t end = 100;
  const auto safe = [&](std::uint64_t wanted) {
    return PumpUntil([&] {
      keeper.Note(end, movie);
      const auto note = NoteIn(folder.Read("a.journal"));
      EXPECT_EQ(note->end, end);
      return note->safeEnd == wanted;
    });
  };
  keeper.Begin(Wide(folder.Path("a.journal")), 10, movie);
  EXPECT_TRUE(safe(0));
  EXPECT_TRUE(PumpUntil([&] { return asked == 1; }));
  end = 200;
  EXPECT_TRUE(safe(0)) << "the disk is busy";
  ++allowed;
  EXPECT_TRUE(safe(100));
  ++allowed;
  EXPECT_TRUE(PumpUntil([&] { return asked == 3; }));
  EXPECT_TRUE(safe(100)) << "it has failed";
  ++allowed;
  EXPECT_TRUE(safe(200));
  allowed = 1000;
  keeper.End(true);
  EXPECT_FALSE(Exists(folder.Path("a.journal")));
}

TEST_F(TvRecordingTest, WhatWasCutOffIsFinishedOnce) {
  const PluggedCards cards;
  const Builder builder;
  const std::string path = folder.Path("a.avi");
  const std::string cut = folder.Path("cut.avi");
  RecordingGraph recording(path);
  ASSERT_EQ(recording.Render(), S_OK);
  LONGLONG length = -1;
  recording.Run();
  ASSERT_TRUE(PumpUntil([&] { return recording.Length() > 2 * kSecond; }, 20000));
  EXPECT_TRUE(FAILED(builder.Recover(path, length))) << "a recording that goes on";
  // What a kill would leave: the files as they are at a moment, the journal first.
  ASSERT_TRUE(::CopyFileA((path + ".journal").c_str(), (cut + ".journal").c_str(), FALSE));
  ASSERT_TRUE(::CopyFileA(path.c_str(), cut.c_str(), FALSE));
  EXPECT_EQ(recording.control->Stop(), S_OK);
  const std::string noted = folder.Read("cut.avi.journal");

  EXPECT_EQ(builder.Copy(cut, folder.Path("copy.avi")), E_FAIL) << "no movie yet";
  EXPECT_EQ(builder.Recover(cut, length), S_OK);
  const auto whole = static_cast<double>(length);
  EXPECT_FALSE(Exists(cut + ".journal"));
  const ReadMovie movie(cut);
  ExpectInOrder(movie.pictures);
  EXPECT_NEAR(static_cast<double>(movie.pictures.size()) * 1001 / 30000, whole / kSecond, 0.3);
  EXPECT_EQ(builder.Recover(cut, length), S_FALSE) << "once";
  // The machine went down: what was not on the disk then may be anything.
  JournalNote note = NoteIn(noted).value();
  note.systemStart -= 1000;
  note.safeEnd = note.end / 2;
  const Bytes bytes = MakeNote(note);
  folder.Write("cut.avi.journal", std::string(bytes.begin(), bytes.end()));
  LONGLONG safe = -1;
  EXPECT_EQ(builder.Recover(cut, safe), S_OK);
  EXPECT_NEAR(static_cast<double>(safe), whole / 2, 0.2 * kSecond);
  EXPECT_LT(ReadMovie(cut).pictures.size(), movie.pictures.size());
  folder.Write("a.avi.journal", "not ours");
  EXPECT_EQ(builder.Recover(path, length), S_FALSE);
  EXPECT_TRUE(Exists(path + ".journal")) << "somebody else's";
}

}  // namespace
}  // namespace quorvex
