// Where the disc is, told by two threads: pictures reach places while wishes change what is chosen.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "platform/dvd/place_board.h"

namespace quorvex {
namespace {

// Counts chapters that are told out of their order.
class ChapterEvents final : public DiscEvents {
 public:
  void Tell(long code, LONG_PTR first, LONG_PTR) override {
    if (code == EC_DVD_CHAPTER_START && last.exchange(first) != first - 1) ++wrong;
  }
  std::atomic<LONG_PTR> last{0};
  std::atomic<int> wrong{0};
};

TEST(PlaceBoardTest, AChoiceWhileAPictureComesIsKeptAndSoIsThePicturesPlace) {
  constexpr int kPlaces = 20000;
  constexpr int kStreams = 8;
  ChapterEvents events;
  PlaceBoard board(events);
  const auto show = [&](int chapter) {
    board.Show(
        std::make_shared<const Place>(Place{.domain = DiscDomain::kTitle, .title = 1, .chapter = chapter}));
  };
  show(1);
  std::atomic<bool> done{false};
  std::thread pictures([&] {
    for (int chapter = 2; chapter <= kPlaces; ++chapter) show(chapter);
    done = true;
  });
  int lost = 0;
  for (int i = 1; !done; ++i) {
    board.Choose({.domain = DiscDomain::kTitle, .audio = i % kStreams, .wishes = i});
    lost += board.Shown()->audio == i % kStreams ? 0 : 1;
  }
  pictures.join();
  EXPECT_EQ(lost, 0);
  EXPECT_EQ(events.wrong, 0);
  EXPECT_EQ(board.Shown()->chapter, kPlaces);
}

}  // namespace
}  // namespace quorvex
