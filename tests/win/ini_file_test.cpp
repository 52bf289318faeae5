#include "base/ini_file.h"

#include <gtest/gtest.h>

#include <random>
#include <thread>

#include "base/handles.h"
#include "tests/support/temp_folder.h"

namespace quorvex {
namespace {

using State = IniSnapshot::State;
using Result = IniFile::Result;

Result SetOne(const IniFile& file, const std::string& value) {
  return file.Update([&](IniDocument& document) { document.Set("S", "k", value); });
}

UniqueHandle HoldExclusively(const std::string& path) {
  return OwnFile(
      ::CreateFileA(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
}

TEST(IniFile, MakesChangesAndSeesThoseOfOthers) {
  const TempFolder folder;
  const IniFile file(folder.Path("a.ini"));
  EXPECT_EQ(file.Read().state, State::kMissing);
  EXPECT_EQ(file.Read().Integer("S", "k", 7), 7);
  EXPECT_EQ(SetOne(file, "1"), Result::kDone);
  EXPECT_EQ(folder.Read("a.ini"), "[S]\r\nk=1\r\n");
  folder.Write("a.ini", "[S]\r\nk=2\r\nj=\r\n");
  EXPECT_EQ(file.Read().Integer("S", "k", 7), 2) << "seen at once, also within one tick of the file's time";
  EXPECT_EQ(file.Read().Integer("S", "j", 7), 7) << "an empty value is a missing number";
  EXPECT_EQ(file.Read().String("S", "k", 0), "");
  EXPECT_FALSE(std::filesystem::exists(folder.Path("a.ini.new")));
}

TEST(IniFile, DoesNotTouchAFileThatStaysTheSame) {
  const TempFolder folder;
  const IniFile file(folder.Write("a.ini", "[S]\nk=1\n"));
  const UniqueHandle held(
      ::CreateFileA(file.Path().c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
  EXPECT_EQ(SetOne(file, "1"), Result::kDone) << "nobody may write, and nothing needs to be written";
}

TEST(IniFile, LeavesAloneWhatItCannotRead) {
  const TempFolder folder;
  const IniFile file(folder.Write("a.ini", "[S]\r\nk=1\r\n"));
  const ULONGLONG start = ::GetTickCount64();
  {
    const UniqueHandle held = HoldExclusively(file.Path());
    ASSERT_TRUE(held);
    EXPECT_EQ(file.Read().state, State::kUnreadable);
    EXPECT_EQ(SetOne(file, "2"), Result::kUnreadable);
  }
  EXPECT_LT(::GetTickCount64() - start, 500U) << "a key press must not wait long for it";
  EXPECT_EQ(folder.Read("a.ini"), "[S]\r\nk=1\r\n");
}

TEST(IniFile, WaitsForAFileThatIsBusyForAMoment) {
  const TempFolder folder;
  const IniFile file(folder.Write("a.ini", "[S]\r\nk=1\r\n"));
  UniqueHandle held = HoldExclusively(file.Path());
  std::thread other([&] {
    ::Sleep(25);
    held.Reset();
  });
  EXPECT_EQ(file.Read().Integer("S", "k", 0), 1);
  other.join();
}

// On a machine with much to do the reader may take longer than anybody waits, but not every time.
TEST(IniFile, WaitsForAReaderToFinish) {
  const TempFolder folder;
  const IniFile file(folder.Write("a.ini", "[S]\r\nk=1\r\n"));
  bool done = false;
  for (int attempt = 0; attempt < 10 && !done; ++attempt) {
    const DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    UniqueHandle reader =
        OwnFile(::CreateFileA(file.Path().c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr));
    std::thread other([&] {
      ::Sleep(25);
      reader.Reset();
    });
    done = SetOne(file, "2") == Result::kDone;
    other.join();
  }
  EXPECT_TRUE(done);
}

TEST(IniFile, WritesNothingThatItCouldNotReadAgain) {
  const TempFolder folder;
  const IniFile file(folder.Write("a.ini", "[S]\r\nk=1\r\n"));
  EXPECT_EQ(SetOne(file, std::string(65 << 20, 'x')), Result::kFailed);
  EXPECT_EQ(file.Read().Integer("S", "k", 0), 1);
}

TEST(IniFile, KeepsUtf16) {
  const TempFolder folder;
  const std::wstring text = L"\xFEFF[S]\r\nk=\x65E5\r\n";
  const IniFile file(folder.Write("a.ini", {reinterpret_cast<const char*>(text.data()), text.size() * 2}));
  EXPECT_EQ(file.Read().String("S", "k", 9), "\xE6\x97\xA5");
  EXPECT_EQ(SetOne(file, "\xC3\xA9"), Result::kDone);
  const std::wstring after = L"\xFEFF[S]\r\nk=\x00E9\r\n";
  EXPECT_EQ(folder.Read("a.ini"), std::string(reinterpret_cast<const char*>(after.data()), after.size() * 2));
}

// Random files as people and programs write them; control characters other than tabs are left out, for the
// platform's own functions disagree about them between versions.
std::string RandomStore(std::mt19937& random) {
  static constexpr std::string_view kPieces[] = {
      "[one]", "[Two]",      "[ one ]",      "[x",    "]", "a",  "B", "key", "=",  " = ",
      "value", "\"quoted\"", "'q'",          "\"",    ";", "# ", " ", "\t",  "12", "-7",
      "0x1F",  "\xC3\xA9",   "\xE6\x97\xA5", "1 2 3 "};
  static constexpr std::string_view kEnds[] = {"\r\n", "\r\n", "\n", "\r\n\r\n"};
  std::string text;
  for (std::size_t lines = random() % 14; lines > 0; --lines) {
    if (random() % 2 == 0) {
      text += kPieces[random() % std::size(kPieces)];
      text += '=';
    }
    for (std::size_t pieces = random() % 4; pieces > 0; --pieces)
      text += kPieces[random() % std::size(kPieces)];
    text += kEnds[random() % std::size(kEnds)];
  }
  return text;
}

class PlatformProfile {
 public:
  explicit PlatformProfile(std::string file) : path(std::move(file)) {}
  [[nodiscard]] std::string String(const char* section, const char* key) const {
    char value[2000] = "";
    ::GetPrivateProfileStringA(section, key, "<none>", value, sizeof value, path.c_str());
    return value;
  }
  [[nodiscard]] int Integer(const char* section, const char* key) const {
    return static_cast<int>(::GetPrivateProfileIntA(section, key, 4711, path.c_str()));
  }
  void RemoveSection(const char* section) const {
    ::WritePrivateProfileStringA(section, nullptr, nullptr, path.c_str());
  }

 private:
  std::string path;
};

TEST(IniFile, ReadsWhatThePlatformReadsAndWritesWhatItCanRead) {
  const TempFolder folder;
  std::mt19937 random(5);
  const char* const sections[] = {"one", "TWO"};
  const char* const keys[] = {"a", "b", "KEY", "12"};
  int found = 0;
  for (int round = 0; round < 2000; ++round) {
    // A name of its own each time: the platform remembers a file for two seconds.
    const std::string name = std::to_string(round) + ".ini";
    const std::string text = RandomStore(random);
    const IniFile file(folder.Write(name, text));
    if (round % 2 == 1) {
      ASSERT_EQ(file.Update([&](IniDocument& document) {
        document.Set("two", "key", "\"new\"");
        document.Set("three", "b", "5 6 ");
      }),
                Result::kDone);
    }
    const PlatformProfile platform(file.Path());
    const IniSnapshot ours = file.Read();
    for (const char* section : sections) {
      for (const char* key : keys) {
        const std::string expected = platform.String(section, key);
        ASSERT_EQ(std::string(ours.document.Find(section, key).value_or("<none>")), expected)
            << text << "\n"
            << section << " " << key;
        found += expected != "<none>" ? 1 : 0;
      }
      ASSERT_EQ(ours.Integer(section, "key", 4711), platform.Integer(section, "key")) << text;
    }
    if (round % 2 == 1) {
      ASSERT_EQ(platform.String("two", "key"), "\"new\"") << text;
      ASSERT_EQ(platform.String("three", "b"), "5 6") << text;
    } else {
      // What is left without a section is what the platform leaves.
      const PlatformProfile theirs(folder.Write("theirs" + name, text));
      theirs.RemoveSection("one");
      ASSERT_EQ(file.Update([](IniDocument& document) { document.RemoveSection("one"); }), Result::kDone);
      const PlatformProfile left(folder.Write("left" + name, folder.Read(name)));
      for (const char* section : {"one", "two", "x"}) {
        for (const char* key : keys)
          ASSERT_EQ(left.String(section, key), theirs.String(section, key)) << text << section << " " << key;
      }
    }
  }
  EXPECT_GT(found, 1000) << "most of the questions must have an answer to compare";
}

}  // namespace
}  // namespace quorvex
