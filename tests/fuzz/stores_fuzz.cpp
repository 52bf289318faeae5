// The stores, as hands, crashes and other programs may leave them: any text is a store, and what is changed
// in it harms nothing.
#include <map>

#include "base/text.h"
#include "devices/cd/disc_store.h"
#include "devices/media/album_store.h"
#include "devices/tv/capture_size.h"
#include "devices/tv/channel_list.h"
#include "devices/tv/tv_settings.h"
#include "tests/fuzz/fuzz_target.h"

namespace quorvex {
namespace {

using Texts = std::vector<std::string>;

constexpr char kNewEntry[] = "C:\\x.mp3";
constexpr char kNewDisc[] = "0000ABCD";
constexpr char kDiscList[] = "CD List";

IniDocument Reread(const IniDocument& store) { return IniDocument(store.Text()); }

// The content of every album that the list names and that is no section of the store's own, nor `added`.
std::map<std::string, Texts> Albums(const IniDocument& store, const Texts& titles, const std::string& added) {
  std::map<std::string, Texts> albums;
  for (const std::string& title : titles) {
    const bool isOther = IsAlbumTitle(title) && !EqualNoCase(title, added);
    if (isOther) albums[title] = LoadAlbumContent(store, title);
  }
  return albums;
}

void CheckAlbumList(const IniDocument& store) {
  const AlbumList list = LoadAlbumList(store);
  Require(list.selected >= -1 && list.selected < static_cast<int>(list.titles.size()),
          "the selection is in the list");
  for (const std::string& title : list.titles) {
    Require(FirstCharacters(title, kLongestAlbumTitle) == title, "a title is no longer than it may be");
    for (const std::string& entry : LoadAlbumContent(store, title))
      Require(FirstCharacters(entry, kLongestMediaPath) == entry, "an entry is no longer than a path may be");
  }
}

void CheckAlbumChanges(const std::string& text) {
  IniDocument store(text);
  const Texts titles = LoadAlbumList(store).titles;
  const std::string firstLine = text.substr(0, text.find_first_of("\r\n"));
  const std::string title = IsAlbumTitle(firstLine) ? firstLine : "New album";
  const auto others = Albums(store, titles, title);
  AddAlbum(store, title);
  AppendToAlbum(store, title, Texts{kNewEntry});
  const IniDocument added = Reread(store);
  const AlbumList list = LoadAlbumList(added);
  Require(list.selected >= 0 && EqualNoCase(list.titles[static_cast<std::size_t>(list.selected)], title),
          "a new album is selected");
  const Texts content = LoadAlbumContent(added, title);
  Require(!content.empty() && content.back() == kNewEntry, "a new entry is the album's last");
  Require(Albums(added, titles, title) == others, "the other albums are as they were");
  DeleteAlbum(store, title);
  Require(Albums(Reread(store), titles, title) == others, "also when the album goes");
  SavePreviewPlaylist(store, Texts{kNewEntry});
  Require(LoadAlbumContent(Reread(store), kPreviewPlaylist) == Texts{kNewEntry},
          "the temporary list is this one");
}

void CheckDiscs(const std::string& text) {
  IniDocument store(text);
  const std::vector<int> playlist = StoredPlaylist(store, kNewDisc);
  Require(playlist.size() <= kMaxOrderLength, "a play list is no longer than it may be");
  if (IsDiscKnown(store, kNewDisc)) return;
  Texts known;
  for (const IniEntry& entry : store.Entries(kDiscList))
    if (IsDiscKnown(store, entry.value)) known.emplace_back(entry.value);
  AddDisc(store, kNewDisc, 3, "Track");
  const IniDocument added = Reread(store);
  Require(IsDiscKnown(added, kNewDisc), "a disc that was added is known");
  for (const std::string& disc : known) Require(IsDiscKnown(added, disc), "and every other still is");
  Require(!playlist.empty() || store.Find(kNewDisc, "Playlist"), "and has a play list");
}

void CheckTelevision(const std::string& text) {
  const IniDocument store(text);
  const TvSettings settings = ReadTvSettings(store);
  Require(static_cast<int>(settings.videoInput) < kVideoInputCount, "the input is one");
  const CaptureSettings capture = ReadCaptureSettings(store);
  Require(capture.frameRate > 0, "a rate is above 0");
  Require(FirstCharacters(capture.file, kLongestCapturePath) == capture.file,
          "a file's path is no longer than may be");
  for (const TunerFeed input : {TunerFeed::kCable, TunerFeed::kAntenna}) {
    PlayOrder channels;
    if (!ReadChannels(channels, ReadChannelText(store, input))) continue;
    channels.MoveTo(ReadLastChannel(store));
    IniDocument written(text);
    WriteChannelList(written, input, channels);
    Require(ReadLastChannel(Reread(written)) == channels.CurrentEntry(), "the channel is stored");
  }
}

void Try(std::string_view bytes) {
  const std::string text(bytes);
  CheckAlbumList(IniDocument(text));
  CheckAlbumChanges(text);
  CheckDiscs(text);
  CheckTelevision(text);
}

}  // namespace
}  // namespace quorvex

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  quorvex::Try(quorvex::TextOf(bytes, size));
  return 0;
}
