// Stores that end anywhere, as a disk or another program may leave them: what is left can be used, and
// changing it loses nothing.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "devices/cd/disc_store.h"
#include "devices/media/album_store.h"

namespace quorvex {
namespace {

using Texts = std::vector<std::string>;

// The whole lines of a text but for those that a change writes anew.
Texts WholeLines(std::string_view text, const Texts& rewritten) {
  Texts lines;
  for (std::size_t end = text.find("\r\n"); end != std::string_view::npos; end = text.find("\r\n")) {
    const std::string_view line = text.substr(0, end);
    const bool isTheirs = std::any_of(rewritten.begin(), rewritten.end(),
                                      [line](const std::string& begin) { return line.starts_with(begin); });
    if (!isTheirs) lines.emplace_back(line);
    text.remove_prefix(end + 2);
  }
  return lines;
}

bool HoldsInOrder(const Texts& lines, const Texts& some) {
  auto at = some.begin();
  for (const std::string& line : lines)
    if (at != some.end() && *at == line) ++at;
  return at == some.end();
}

TEST(TornStores, ChangingThemKeepsEveryLineThatIsLeft) {
  const struct {
    std::string text;
    Texts rewritten;
    std::function<void(IniDocument&)> change;
    std::function<bool(const IniDocument&)> holds;
  } stores[] = {
      {"; mine\r\n[QUORVEX]\r\nLastDevice=3\r\n\r\n[CD]\r\nAutoPlay=1\r\nStopOnExit=1\r\n; the end\r\n",
       {"AutoPlay"},
       [](IniDocument& store) { store.Set("CD", "AutoPlay", "0"); },
       [](const IniDocument& store) { return store.Integer("CD", "AutoPlay", 1) == 0; }},
      {"[CD List]\r\nNumber of CDs=2\r\n1=00001234\r\n2=00005678\r\n[00001234]\r\nTitle=A\r\nPlaylist=2 1 "
       "\r\n"
       "[00005678]\r\nTitle=B\r\n1=Track 01\r\n",
       {"Number of CDs"},
       [](IniDocument& store) { AddDisc(store, "0000ABCD", 2, "Track"); },
       [](const IniDocument& store) {
         return IsDiscKnown(store, "0000ABCD") && StoredPlaylist(store, "0000ABCD") == std::vector{1, 2};
       }},
      {"[List of Albums]\r\nAlbums=2\r\nSelection=2\r\n1=Evening\r\n2=Party\r\n[Evening]\r\nTracks=1\r\n"
       "1=C:\\a.mp3\r\n[Party]\r\nTracks=1\r\n1=D:\\c.avi\r\n[Last Visit]\r\nDir=C:\\Music\r\n",
       {"Albums", "Selection"},
       [](IniDocument& store) {
         AddAlbum(store, "New");
         AppendToAlbum(store, "New", Texts{"C:\\x"});
       },
       [](const IniDocument& store) {
         return LoadAlbumList(store).titles.back() == "New" &&
                LoadAlbumContent(store, "New") == Texts{"C:\\x"};
       }},
  };
  for (const auto& store : stores) {
    for (std::size_t length = 0; length <= store.text.size(); ++length) {
      const std::string torn = store.text.substr(0, length);
      IniDocument document(torn);
      store.change(document);
      const std::string after = document.Text();
      EXPECT_TRUE(store.holds(IniDocument(after))) << torn;
      EXPECT_TRUE(HoldsInOrder(WholeLines(after, store.rewritten), WholeLines(torn, store.rewritten)))
          << after;
    }
  }
}

}  // namespace
}  // namespace quorvex
