// What may stand in the way of the stores on disk: whatever it is, a store holds the old or the new content
// afterwards, and can be changed again as soon as it is gone.
#include <gtest/gtest.h>

#include <future>

#include "base/handles.h"
#include "base/ini_file.h"
#include "devices/cd/disc_store.h"
#include "devices/media/album_store.h"
#include "tests/support/temp_folder.h"

namespace quorvex {
namespace {

using Result = IniFile::Result;
using Lift = std::function<void()>;

struct Store {
  const char* name;
  std::string before;
  std::function<void(IniDocument&)> change;

  [[nodiscard]] std::string After() const {
    IniDocument document(before);
    change(document);
    return document.Text();
  }
};

const Store kStores[] = {
    {"quorvex.ini", "; mine\r\n[CD]\r\nAutoPlay=1\r\n",
     [](IniDocument& store) { store.Set("CD", "AutoPlay", "0"); }},
    {"cd.abm", "[CD List]\r\nNumber of CDs=1\r\n1=00001234\r\n[00001234]\r\nTitle=A\r\nPlaylist=2 1 \r\n",
     [](IniDocument& store) {
       if (!IsDiscKnown(store, "0000ABCD")) AddDisc(store, "0000ABCD", 3, "Track");
     }},
    {"mfiles.abm",
     "[List of Albums]\r\nAlbums=1\r\nSelection=1\r\n1=Evening\r\n[Evening]\r\nTracks=1\r\n1=C:\\a.mp3\r\n",
     [](IniDocument& store) { AddAlbum(store, "New"); }},
};

// Opens a file and keeps it open, for others as `share` says.
Lift Hold(const std::string& path, DWORD share, DWORD disposition = OPEN_EXISTING) {
  auto held = std::make_shared<UniqueHandle>(OwnFile(
      ::CreateFileA(path.c_str(), GENERIC_READ | GENERIC_WRITE, share, nullptr, disposition, 0, nullptr)));
  EXPECT_TRUE(*held) << path;
  return [held] { held->Reset(); };
}

Lift MakeReadOnly(const std::string& path) {
  ::SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY);
  return [path] { ::SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL); };
}

// Another program is in the middle of its change.
Lift TakeTurn(const std::string& path) {
  auto begun = std::make_shared<std::promise<void>>();
  auto end = std::make_shared<std::promise<void>>();
  auto turn = std::make_shared<std::future<Result>>(std::async(std::launch::async, [=] {
    return IniFile(path).Update([&](IniDocument&) {
      begun->set_value();
      end->get_future().wait();
    });
  }));
  begun->get_future().wait();
  return [=] {
    end->set_value();
    EXPECT_EQ(turn->get(), Result::kDone);
  };
}

// The file is of a time to come: the clock was set back since.
Lift PutIntoTheFuture(const std::string& path) {
  const UniqueHandle file = OwnFile(::CreateFileA(path.c_str(), FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ,
                                                  nullptr, OPEN_EXISTING, 0, nullptr));
  const SYSTEMTIME time{2099, 1, 4, 1, 12, 0, 0, 0};
  FILETIME future{};
  ::SystemTimeToFileTime(&time, &future);
  EXPECT_NE(::SetFileTime(file.Get(), &future, &future, &future), FALSE);
  return [] {};
}

struct Fault {
  const char* name;
  Result result;
  std::function<Lift(const TempFolder& folder, const std::string& name)> put;
};

std::string Fresh(const std::string& name) { return name + ".new"; }

const Fault kFaults[] = {
    {"locked by another program", Result::kUnreadable,
     [](const auto& folder, const auto& name) { return Hold(folder.Path(name), 0); }},
    {"held by another program that lets it be read", Result::kFailed,
     [](const auto& folder, const auto& name) {
       return Hold(folder.Path(name), FILE_SHARE_READ | FILE_SHARE_WRITE);
     }},
    {"read-only", Result::kFailed,
     [](const auto& folder, const auto& name) { return MakeReadOnly(folder.Path(name)); }},
    {"in the middle of another program's change", Result::kFailed,
     [](const auto& folder, const auto& name) { return TakeTurn(folder.Path(name)); }},
    {"what a killed program has left of its new content", Result::kDone,
     [](const auto& folder, const auto& name) {
       folder.Write(Fresh(name), "[half of a sec");
       return Lift([] {});
     }},
    {"such a rest that cannot be written", Result::kDone,
     [](const auto& folder, const auto& name) { return MakeReadOnly(folder.Write(Fresh(name), "[half")); }},
    {"such a rest that is locked", Result::kDone,
     [](const auto& folder, const auto& name) { return Hold(folder.Path(Fresh(name)), 0, CREATE_NEW); }},
    {"the clock set back", Result::kDone,
     [](const auto& folder, const auto& name) { return PutIntoTheFuture(folder.Path(name)); }},
};

TEST(StoreFaults, TheOldContentOrTheNewAndNeverLess) {
  for (const Store& store : kStores) {
    for (const Fault& fault : kFaults) {
      SCOPED_TRACE(std::string(store.name) + ", " + fault.name);
      const TempFolder folder;
      const IniFile file(folder.Write(store.name, store.before));
      const Lift lift = fault.put(folder, store.name);
      EXPECT_EQ(file.Update(store.change), fault.result);
      lift();
      EXPECT_EQ(folder.Read(store.name), fault.result == Result::kDone ? store.After() : store.before);
      EXPECT_EQ(file.Update(store.change), Result::kDone);
      EXPECT_EQ(folder.Read(store.name), store.After());
    }
  }
}

// What cannot be read is nobody's to write over.
TEST(StoreFaults, AnUnreadableStoreIsLeftAlone) {
  for (const Store& store : kStores) {
    const TempFolder folder;
    const std::string bigEndian("\xFE\xFF\0[\0S\0]", 8);
    const IniFile file(folder.Write(store.name, bigEndian));
    EXPECT_EQ(file.Update(store.change), Result::kUnreadable) << store.name;
    EXPECT_EQ(folder.Read(store.name), bigEndian) << store.name;
    std::filesystem::remove(file.Path());
    std::filesystem::create_directory(file.Path());
    EXPECT_EQ(file.Update(store.change), Result::kUnreadable) << store.name;
    EXPECT_TRUE(std::filesystem::is_directory(file.Path())) << store.name;
  }
}

TEST(StoreFaults, AnEmptyStoreIsBegunAnew) {
  for (const Store& store : kStores) {
    const TempFolder folder;
    const IniFile file(folder.Write(store.name, ""));
    EXPECT_EQ(file.Update(store.change), Result::kDone) << store.name;
    IniDocument expected("");
    store.change(expected);
    EXPECT_EQ(folder.Read(store.name), expected.Text()) << store.name;
  }
}

}  // namespace
}  // namespace quorvex
