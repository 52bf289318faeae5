// M3U play lists, and an album made of one.
#include "devices/media/m3u.h"

#include "base/text.h"
#include "devices/media/album_store.h"
#include "tests/fuzz/fuzz_target.h"

namespace quorvex {
namespace {

void CheckEntry(const std::string& entry) {
  Require(!entry.empty() && !entry.starts_with(';'), "an entry is neither empty nor a remark");
  Require(entry.find_first_of(std::string_view("\n\0", 2)) == std::string::npos,
          "an entry holds no line end and no zero");
  Require(FirstCharacters(entry, kLongestMediaPath) == entry, "an entry is no longer than a path may be");
}

// Carriage returns within a line become blanks; blanks at the ends are the store's.
std::string Stored(std::string entry) {
  std::replace(entry.begin(), entry.end(), '\r', ' ');
  return std::string(Trimmed(entry));
}

void Try(std::string_view bytes) {
  (void)IsM3U(bytes);
  const std::string text = M3UText(std::string(bytes));
  Require(IsUtf8(text), "its text is UTF-8");
  const std::vector<std::string> entries = AlbumEntriesOfM3U(text);
  std::for_each(entries.begin(), entries.end(), CheckEntry);
  const std::vector<std::string> preview = PreviewEntriesOfM3U(text);
  Require(preview.size() <= entries.size() && preview.size() + 1 >= entries.size() &&
              std::equal(preview.begin(), preview.end(), entries.begin()),
          "the two lists differ in the last entry at the most");

  IniDocument store("");
  SaveAlbumContent(store, "A", entries);
  const std::vector<std::string> album = LoadAlbumContent(IniDocument(store.Text()), "A");
  Require(std::equal(album.begin(), album.end(), entries.begin(), entries.end(),
                     [](const auto& one, const auto& other) { return Trimmed(one) == Stored(other); }),
          "an album gives back what was put into it");
}

}  // namespace
}  // namespace quorvex

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  quorvex::Try(quorvex::TextOf(bytes, size));
  return 0;
}
