#include "devices/media/album_store.h"

#include <gtest/gtest.h>

#include "devices/media/file_selection.h"

namespace quorvex {
namespace {

using Texts = std::vector<std::string>;

constexpr char kTwoAlbums[] =
    "; my albums\r\n"
    "[List of Albums]\r\nAlbums=2\r\nSelection=1\r\n1=Evening\r\n2=Party\r\n"
    "[Notes]\r\nmine=yes\r\n"
    "[Evening]\r\nTracks=2\r\n1=C:\\Music\\night.mp3\r\n2=C:\\Video\\clip.avi\r\n"
    "[Party]\r\nTracks=1\r\n1=C:\\Music\\loud.mp3\r\n";

TEST(AlbumStore, TheSelectionIsAPlaceOfTheList) {
  const auto selected = [](const std::string& line) {
    return LoadAlbumList(IniDocument("[List of Albums]\r\nAlbums=2\r\n" + line + "1=A\r\n2=B\r\n3=C\r\n"))
        .selected;
  };
  EXPECT_EQ(selected(""), 0) << "the first when it was never saved";
  EXPECT_EQ(selected("Selection=2\r\n"), 1);
  for (const char* nowhere : {"Selection=3\r\n", "Selection=0\r\n", "Selection=-1\r\n", "Selection=x\r\n"})
    EXPECT_EQ(selected(nowhere), -1) << nowhere;
  IniDocument store(kTwoAlbums);
  SaveSelection(store, 1);
  EXPECT_EQ(store.Find("List of Albums", "Selection"), "2");
  SaveSelection(store, 0);
  SaveSelection(store, -1);
  EXPECT_EQ(store.Find("List of Albums", "Selection"), "2") << "stands for none";
}

TEST(AlbumStore, NewAlbumsAreWrittenInTheGivenLines) {
  IniDocument store("");
  AddAlbum(store, "Evening");
  EXPECT_EQ(store.Text(),
            "[List of Albums]\r\nAlbums=1\r\nSelection=1\r\n1=Evening\r\n[Evening]\r\nTracks=0\r\n");
  AppendToAlbum(store, "Evening", Texts{"C:\\a.mp3"});
  AppendToAlbum(store, "Evening", Texts{"C:\\b.mp3", "C:\\A.MP3"});
  AddAlbum(store, "Party");
  EXPECT_EQ(store.Text(),
            "[List of Albums]\r\nAlbums=2\r\nSelection=2\r\n1=Evening\r\n2=Party\r\n"
            "[Evening]\r\nTracks=3\r\n1=C:\\a.mp3\r\n2=C:\\b.mp3\r\n3=C:\\A.MP3\r\n"
            "[Party]\r\nTracks=0\r\n");
  DeleteContentEntry(store, "Evening", "c:\\A.mp3");
  EXPECT_EQ(LoadAlbumContent(store, "Evening"), (Texts{"C:\\b.mp3", "C:\\A.MP3"}))
      << "the first of its copies";
  AddAlbum(store, "EVENING");
  EXPECT_EQ(LoadAlbumList(store).titles.size(), 2U);
  EXPECT_EQ(LoadAlbumList(store).selected, 0);
  EXPECT_EQ(LoadAlbumContent(store, "Evening").size(), 2U)
      << "an album that another program made meanwhile keeps its content";
}

TEST(AlbumStore, DeletingSelectsTheNextOrTheOneBeforeOrNone) {
  IniDocument store("");
  for (const char* title : {"A", "B", "C"}) AddAlbum(store, title);
  DeleteAlbum(store, "missing");
  DeleteAlbum(store, "b");
  EXPECT_EQ(LoadAlbumList(store).titles, (Texts{"A", "C"}));
  EXPECT_EQ(LoadAlbumList(store).selected, 1);
  DeleteAlbum(store, "C");
  EXPECT_EQ(LoadAlbumList(store).selected, 0);
  DeleteAlbum(store, "A");
  EXPECT_EQ(store.Text(), "[List of Albums]\r\nAlbums=0\r\nSelection=2\r\n");
  EXPECT_EQ(LoadAlbumList(store).selected, -1);
}

TEST(AlbumStore, ARenamedAlbumKeepsItsPlaceAndItsContent) {
  IniDocument store(kTwoAlbums);
  RenameAlbum(store, "evening", "Night");
  RenameAlbum(store, "missing", "Other");
  RenameAlbum(store, "Night", "PARTY");
  EXPECT_EQ(store.Text(),
            "; my albums\r\n"
            "[List of Albums]\r\nAlbums=2\r\nSelection=1\r\n1=Night\r\n2=Party\r\n"
            "[Notes]\r\nmine=yes\r\n"
            "[Party]\r\nTracks=1\r\n1=C:\\Music\\loud.mp3\r\n"
            "[Night]\r\nTracks=2\r\n1=C:\\Music\\night.mp3\r\n2=C:\\Video\\clip.avi\r\n");
}

TEST(AlbumStore, TheTemporaryPlayListAndTheLastFolderAreNoAlbums) {
  IniDocument store(kTwoAlbums);
  SavePreviewPlaylist(store, Texts{"C:\\a.mp3", "C:\\b.mp3"});
  SaveLastFolder(store, "C:\\Music");
  SavePreviewPlaylist(store, Texts{"C:\\c.mp3"});
  EXPECT_EQ(LoadAlbumList(store).titles.size(), 2U);
  EXPECT_EQ(LastFolder(store), "C:\\Music");
  EXPECT_EQ(LoadAlbumContent(store, kPreviewPlaylist), Texts{"C:\\c.mp3"});
  EXPECT_EQ(store.Text(),
            std::string(kTwoAlbums) +
                "[P-r-e-v-i-e-W]\r\n1=C:\\c.mp3\r\nTracks=1\r\n[Last Visit]\r\nDir=C:\\Music\r\n");
}

TEST(AlbumStore, TitlesOfTheStoresOwnAndWhatBreaksLinesAreNone) {
  for (const char* reserved : {"", "list of albums", "LAST VISIT", "p-R-e-v-i-e-w", " ", "a ", "\ta", "a\nb"})
    EXPECT_FALSE(IsAlbumTitle(reserved)) << reserved;
  for (const char* title : {"a]b", "[a]", "=", ";a", "\"a\"", "'", "1", "Albums", "\xD0\x9C\xD1\x83\xD0\xB7"})
    EXPECT_TRUE(IsAlbumTitle(title)) << title;
}

// Lists that a hand or a crash has damaged: what is left of them can be used, and a list that names the
// store's own sections does not get at them.
TEST(AlbumStore, ADamagedStoreEndsWell) {
  const IniDocument torn(
      "[List of Albums]\r\nAlbums=2147483647\r\nSelection=3\r\n1=A\r\n3=C\r\n03=D\r\n3=E\r\n");
  EXPECT_EQ(LoadAlbumList(torn).titles, (Texts{"A", "C"}));
  EXPECT_EQ(LoadAlbumList(torn).selected, 1) << "the album stored under that number";
  for (const char* count : {"", "Tracks=\r\n", "Tracks=-1\r\n", "Tracks=none\r\n"})
    EXPECT_EQ(LoadAlbumContent(IniDocument(std::string("[A]\r\n1=x\r\n") + count), "A"), Texts{});
  const std::string own =
      "[List of Albums]\r\nAlbums=2\r\nSelection=1\r\n1=Last Visit\r\n2=A\r\n[Last Visit]\r\nDir=C:\\\r\n";
  IniDocument store(own);
  AppendToAlbum(store, "Last Visit", Texts{"C:\\x"});
  AppendToAlbum(store, "", Texts{"C:\\x"});
  EXPECT_EQ(store.Text(), own);
  RenameAlbum(store, "Last Visit", "B");
  DeleteAlbum(store, "B");
  EXPECT_EQ(LastFolder(store), "C:\\");
  const std::string longTitle(40, 't');
  EXPECT_EQ(LoadAlbumList(IniDocument("[List of Albums]\r\nAlbums=1\r\n1=" + longTitle + "\r\n")).titles,
            Texts{longTitle.substr(0, 32)});
}

TEST(FileSelection, IsOnePathOrAFolderAndItsNames) {
  using namespace std::string_view_literals;
  EXPECT_EQ(SelectedPaths(""), Texts{});
  EXPECT_EQ(SelectedPaths("\0\0\0"sv), Texts{});
  EXPECT_EQ(SelectedPaths("C:\\one.mp3\0\0\0"sv), Texts{"C:\\one.mp3"});
  EXPECT_EQ(SelectedPaths("C:\\one.mp3"), Texts{"C:\\one.mp3"});
  EXPECT_EQ(SelectedPaths("C:\\M\0a.mp3\0th ree.m3u\0\0junk\0"sv),
            (Texts{"C:\\M\\a.mp3", "C:\\M\\th ree.m3u"}));
  EXPECT_EQ(SelectedPaths("C:\\\0a\0b"sv), (Texts{"C:\\a", "C:\\b"})) << "cut off within the last name";
  for (const std::string_view whole : {"C:\\a\0"sv, "C:\\\0a\0b\0\0"sv, "\0\0"sv})
    EXPECT_TRUE(IsWholeSelection(whole));
  for (const std::string_view cut : {"C:\\a"sv, "C:\\\0a\0b"sv, "C:\\\0a\0b\0"sv})
    EXPECT_FALSE(IsWholeSelection(cut));
}

}  // namespace
}  // namespace quorvex
