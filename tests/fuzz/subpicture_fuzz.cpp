// Subpicture units of a DVD, drawn into a small picture.
#include "platform/dvd/subpicture.h"

#include "tests/fuzz/fuzz_target.h"

namespace quorvex {
namespace {

// A picture of its own length: writing beside it is seen.
void Draw(const Subpicture& subpicture, std::int64_t ticks) {
  constexpr int kWidth = 64;
  constexpr int kHeight = 8;
  constexpr int kPixel = 4;
  constexpr SubpicturePalette kPalette{0x108080, 0xEB8080, 0x51F05A, 0x912236, 0x296EF0};
  const ButtonHighlight button{.area = {.left = -5, .top = -5, .right = 30, .bottom = 90},
                               .colors = HighlightColors(0x43210F8F)};
  std::vector<std::uint8_t> pixels(std::size_t{kWidth} * kHeight * kPixel);
  const PictureView down{pixels.data(), std::ptrdiff_t{kWidth} * kPixel, kWidth, kHeight};
  BlendSubpicture(down, subpicture, ticks, kPalette, std::nullopt);
  const PictureView up{down.top + down.stride * (kHeight - 1), -down.stride, kWidth, kHeight};
  BlendSubpicture(up, subpicture, ticks, kPalette, button);
}

void Try(std::span<const std::uint8_t> unit) {
  constexpr std::int64_t kLater = 50'000;
  const auto picture = DecodeSubpicture(unit);
  if (!picture) return;
  const auto area =
      static_cast<std::size_t>(picture->area.Width()) * static_cast<std::size_t>(picture->area.Height());
  Require(picture->pixels.size() == area, "there is a pixel for each of its area");
  Require(std::all_of(picture->pixels.begin(), picture->pixels.end(),
                      [](std::uint8_t pixel) { return pixel < 4; }),
          "pixels have two bits");
  Require(!picture->steps.empty(), "it has colours");
  Draw(*picture, picture->show);
  Draw(*picture, picture->show + kLater);
}

}  // namespace
}  // namespace quorvex

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  quorvex::Try({bytes, size});
  return 0;
}
