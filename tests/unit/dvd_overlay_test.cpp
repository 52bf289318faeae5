// Which subpicture and which button are seen when, from the pieces that a disc's sectors bring.
#include "platform/dvd/overlay.h"

#include <gtest/gtest.h>

#include "tests/unit/subpicture_support.h"

namespace quorvex {
namespace {

constexpr DvdTicks kStart = 9000;
constexpr DvdTicks kLength = 100 * 1024;
constexpr int kWidth = 4;

UnitBytes Unit(bool forced = false) {
  UnitPlan plan{.width = kWidth, .height = 2, .pixels = {1, 1, 1, 1, 1, 1, 1, 1}, .later = {{100, {0x02}}}};
  if (forced) plan.firstCommands.front() = 0x00;
  return MakeUnit(plan);
}

PlayItem Piece(const UnitBytes& bytes, std::optional<DvdTicks> time = kStart, int stream = 0) {
  return {.time = time, .stream = DvdStreamKind::kSubpicture, .number = stream, .bytes = bytes};
}

// Whether anything is seen at a time.
bool Shows(const Overlay& overlay, DvdTicks time, bool onlyForced = false) {
  return overlay.At(time, {}, onlyForced) != Overlay::Look();
}

std::shared_ptr<Place> Menu(int buttons) {
  const auto place = std::make_shared<Place>();
  place->domain = DiscDomain::kTitleSetMenu;
  hli_t& highlight = place->control.hli;
  highlight.hl_gi.hli_ss = 1;
  highlight.hl_gi.btn_ns = static_cast<std::uint8_t>(buttons);
  highlight.btn_colit.btn_coli[0][0] = 0x2222FFFF;
  highlight.btn_colit.btn_coli[0][1] = 0x3333FFFF;
  for (btni_t& button : highlight.btnit) {
    button.btn_coln = 1;
    button.x_end = kWidth - 1;
    button.y_end = 1;
  }
  return place;
}

TEST(OverlayTest, AUnitIsSeenFromItsTimeUntilItsEndHoweverItComes) {
  const UnitBytes whole = Unit();
  for (std::size_t cut = 0; cut <= whole.size(); ++cut) {
    Overlay overlay;
    const auto middle = whole.begin() + static_cast<std::ptrdiff_t>(cut);
    overlay.Feed(Piece({whole.begin(), middle}));
    if (cut < whole.size()) {
      EXPECT_FALSE(Shows(overlay, kStart)) << "a unit cut at " << cut;
      overlay.Feed(Piece({middle, whole.end()}, cut == 0 ? std::optional(kStart) : std::nullopt));
    }
    EXPECT_FALSE(Shows(overlay, kStart - 1)) << cut;
    EXPECT_TRUE(Shows(overlay, kStart)) << cut;
    EXPECT_TRUE(Shows(overlay, kStart + kLength - 1)) << cut;
    EXPECT_FALSE(Shows(overlay, kStart + kLength)) << cut;
  }
}

TEST(OverlayTest, WhatIsNoUnitShowsNothing) {
  const UnitBytes whole = Unit();
  Overlay overlay;
  overlay.Feed(Piece({whole.begin() + 4, whole.end()}, std::nullopt));
  EXPECT_FALSE(Shows(overlay, kStart)) << "the beginning is missing";
  overlay.Feed(Piece({0, 2, 0, 0}));
  overlay.Feed(Piece({0, 12, 0xFF, 0xFF, 1, 2, 3, 4, 5, 6, 7, 8}));
  EXPECT_FALSE(Shows(overlay, kStart)) << "sizes that cannot be";
  overlay.Feed(Piece(whole));
  EXPECT_TRUE(Shows(overlay, kStart)) << "the next one counts again";
}

TEST(OverlayTest, TheLastUnitThatHasBegunIsSeen) {
  Overlay overlay;
  for (int i = 0; i < 10; ++i) overlay.Feed(Piece(Unit(), kStart * (i + 1)));
  const auto serial = [&](DvdTicks time) { return overlay.At(time, {}, false).subpicture; };
  EXPECT_EQ(serial(kStart * 10), 10U);
  EXPECT_EQ(serial(kStart * 10 - 1), 9U);
  EXPECT_EQ(serial(kStart * 2), 0U) << "too long ago to be kept";
  overlay.SetStretch(1);
  EXPECT_FALSE(Shows(overlay, kStart * 10)) << "another stretch of the timeline";
  overlay.SetStretch(0);
  overlay.Feed(Piece({0}, kStart, 1));
  EXPECT_FALSE(Shows(overlay, kStart * 10)) << "another language was chosen";
}

TEST(OverlayTest, SubtitlesThatAreOffAreSeenWhenTheyAreForcedOrAMenus) {
  Overlay overlay;
  overlay.Feed(Piece(Unit()));
  EXPECT_FALSE(Shows(overlay, kStart, true));
  const auto title = std::make_shared<Place>();
  title->domain = DiscDomain::kTitle;
  overlay.SetPlace(title);
  EXPECT_FALSE(Shows(overlay, kStart, true));
  title->control.hli.hl_gi.hli_ss = 1;
  title->control.hli.hl_gi.btn_ns = 1;
  EXPECT_TRUE(Shows(overlay, kStart, true)) << "a film with buttons";
  overlay.SetPlace(Menu(0));
  EXPECT_TRUE(Shows(overlay, kStart, true));
  overlay.Forget();
  overlay.Feed(Piece(Unit(true)));
  EXPECT_TRUE(Shows(overlay, kStart, true));
}

TEST(OverlayTest, TheChosenButtonIsInItsColours) {
  const auto menu = Menu(2);
  menu->control.hli.btnit[1].btn_coln = 0;  // chosen, it looks as before
  Overlay overlay;
  overlay.SetPalette({0x108080, 0xEB8080, 0x51F05A, 0x912236});
  overlay.SetPlace(menu);
  overlay.Feed(Piece(Unit()));

  const auto pixel = [&](Overlay::Selection selection) {
    std::vector<std::uint8_t> picture(std::size_t{kWidth} * 2 * 4);
    overlay.Draw({picture.data(), kWidth * 4, kWidth, 2}, kStart, selection, false);
    return std::array{picture[2], picture[1], picture[0]};
  };
  const auto plain = pixel({});
  const auto chosen = pixel({1, false});
  EXPECT_NE(chosen, plain);
  EXPECT_NE(pixel({1, true}), chosen);
  for (const int button : {-1, 0, 2, 3, 1000}) {
    EXPECT_EQ(pixel({button, false}), plain) << button;
    EXPECT_EQ(overlay.At(kStart, {button, false}, false).selection, Overlay::Selection()) << button;
  }
  EXPECT_EQ(overlay.At(kStart, {1, true}, false).selection, (Overlay::Selection{1, true}));
  overlay.SetPlace(nullptr);
  EXPECT_EQ(pixel({1, false}), plain);
}

}  // namespace
}  // namespace quorvex
