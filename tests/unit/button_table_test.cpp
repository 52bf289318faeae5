#include "panel/button_table.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "base/geometry.h"
#include "panel/display_elements.h"

namespace quorvex {
namespace {

TEST(ButtonTable, ButtonsLieOnThePanelBesideEachOtherAndBesideTheDisplay) {
  const Rect display = kDisplayElements[kWholeDisplay].Rectangle();
  for (std::size_t i = 0; i < kButtonCount; ++i) {
    const Rect rect = kButtons[i].Rectangle();
    EXPECT_TRUE(rect.left >= 0 && rect.top >= 0 && rect.right <= 534 && rect.bottom <= 115)
        << kButtons[i].command;
    EXPECT_FALSE(rect.Intersects(display)) << kButtons[i].command;
    for (std::size_t j = 0; j < i; ++j) {
      EXPECT_FALSE(rect.Intersects(kButtons[j].Rectangle()))
          << kButtons[i].command << " and " << kButtons[j].command;
    }
  }
}

TEST(ButtonTable, EveryButtonHasAName) {
  for (const ButtonLayout& button : kButtons) EXPECT_NE(button.name, 0) << button.command;
}

// What draws the skin keeps a table of its own.
TEST(ButtonTable, TheArtworkLiesWhereTheKeysAndElementsAre) {
  std::ifstream file(QUORVEX_SOURCE_DIR "/resources/art/layout.py");
  const std::string drawn{std::istreambuf_iterator<char>(file), {}};
  const auto numbers = [](auto... values) { return ((", " + std::to_string(values)) + ...).substr(2); };
  const auto isDrawn = [&](const std::string& text) { return drawn.find(text) != std::string::npos; };
  for (const ButtonLayout& key : kButtons) {
    const std::string row = numbers(key.x, key.y, key.width, key.height);
    EXPECT_TRUE(isDrawn(std::to_string(key.command) + ": (" + row + ", ")) << key.command << " at " << row;
  }
  std::string digits;
  for (int element = 0; element <= kTextLine; ++element) {
    const ElementLayout& layout = kDisplayElements[static_cast<std::size_t>(element)];
    const std::string row = numbers(layout.x, layout.y, layout.width, layout.height);
    if (layout.kind == ElementKind::kDigit) {
      digits += ", " + std::to_string(layout.x);
    } else if (element == kTextLine) {
      EXPECT_TRUE(isDrawn("TEXT_LINE = (" + row + ")"));
    } else if (element != kFileLamp) {  // lies under the text line and is not drawn
      EXPECT_TRUE(isDrawn("    " + std::to_string(element) + ": (" + row + ")")) << element << " at " << row;
    }
  }
  EXPECT_TRUE(isDrawn("((" + digits.substr(2) + "))")) << digits;
}

}  // namespace
}  // namespace quorvex
