// The tables of a disc that an application is told of.
#include "platform/dvd/disc_tables.h"
#include "tests/fuzz/fuzz_target.h"

namespace quorvex {
namespace {

void CheckStreams(const StreamAttributes& attributes) {
  for (const auto part : {StreamAttributes::Part::kMenu, StreamAttributes::Part::kTitle}) {
    const int sounds = attributes.AudioCount(part);
    const int subpictures = attributes.SubpictureCount(part);
    Require(sounds >= 0 && sounds <= 8 && subpictures >= 0 && subpictures <= 32,
            "no more streams than there may be");
    for (int i = 0; i < sounds; ++i)
      Require(LanguageOf(attributes.AudioOf(part, i)).size() % 2 == 0, "a language is two letters or none");
    for (int i = 0; i < subpictures; ++i)
      Require(LanguageOf(attributes.SubpictureOf(part, i)).size() % 2 == 0,
              "a language is two letters or none");
  }
}

void Try(std::span<const std::uint8_t> file) {
  constexpr std::size_t kMost = 99;
  const auto tables = DiscTables::Read(file);
  if (!tables) return;
  Require(tables->titles.size() <= kMost && tables->titleSets.size() <= kMost,
          "no more titles than there may be");
  Require(tables->texts.size() <= file.size(), "texts lie in the file");
  for (const DiscTables::Title& title : tables->titles) CheckStreams(tables->Of(title.titleSet));
  for (int set = 0; set <= static_cast<int>(tables->titleSets.size()) + 1; ++set)
    CheckStreams(tables->Of(set));
}

}  // namespace
}  // namespace quorvex

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  quorvex::Try({bytes, size});
  return 0;
}
