#include "panel/button_table.h"

#include <gtest/gtest.h>

#include "base/geometry.h"
#include "panel/display_elements.h"

namespace quorvex {
namespace {

Rect RectOf(const ButtonLayout& button) {
  return {button.x, button.y, button.x + button.width, button.y + button.height};
}

TEST(ButtonTable, ButtonsLieOnThePanelBesideEachOtherAndBesideTheDisplay) {
  const Rect display = kDisplayElements[kWholeDisplay].Rectangle();
  for (std::size_t i = 0; i < kButtonCount; ++i) {
    const Rect rect = RectOf(kButtons[i]);
    EXPECT_TRUE(rect.left >= 0 && rect.top >= 0 && rect.right <= 534 && rect.bottom <= 115)
        << kButtons[i].command;
    EXPECT_FALSE(rect.Intersects(display)) << kButtons[i].command;
    for (std::size_t j = 0; j < i; ++j) {
      EXPECT_FALSE(rect.Intersects(RectOf(kButtons[j])))
          << kButtons[i].command << " and " << kButtons[j].command;
    }
  }
}

TEST(ButtonTable, EveryButtonHasAName) {
  for (const ButtonLayout& button : kButtons) EXPECT_NE(button.name, 0) << button.command;
}

}  // namespace
}  // namespace quorvex
