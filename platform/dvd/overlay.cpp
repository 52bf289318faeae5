#include "platform/dvd/overlay.h"

#include <algorithm>

namespace quorvex {
namespace {

constexpr std::size_t kKept = 8;

// A unit begins with its size.
std::size_t SizeOf(const std::vector<std::uint8_t>& unit) {
  return unit.size() < 2 ? 0 : static_cast<std::size_t>(unit[0]) << 8 | unit[1];
}

}  // namespace

void Overlay::Forget() {
  unit.clear();
  timed.clear();
  place.reset();
}

void Overlay::Feed(const PlayItem& piece) {
  if (piece.number != stream) {
    unit.clear();
    timed.clear();
    stream = piece.number;
  }
  if (piece.time) {
    unit.clear();
    unitTime = *piece.time;
  } else if (unit.empty()) {
    return;  // the middle of one whose beginning is missing
  }
  unit.insert(unit.end(), piece.bytes.begin(), piece.bytes.end());
  if (const std::size_t size = SizeOf(unit); size > 2 && unit.size() >= size) {
    unit.resize(size);
    Finish(piece.stretch);
  }
}

void Overlay::Finish(int ofStretch) {
  if (std::optional<Subpicture> decoded = DecodeSubpicture(unit)) {
    if (timed.size() == kKept) timed.erase(timed.begin());
    timed.push_back({++serials, ofStretch, unitTime, std::move(*decoded)});
  }
  unit.clear();
}

// The last unit that has begun to show by then, unless it is over.
const Overlay::Timed* Overlay::Find(DvdTicks time, bool onlyForced) const {
  const auto begun = std::find_if(timed.rbegin(), timed.rend(), [&](const Timed& one) {
    return one.stretch == stretch && one.begin + one.subpicture.show <= time;
  });
  if (begun == timed.rend()) return nullptr;
  const Subpicture& subpicture = begun->subpicture;
  if (subpicture.hide && begun->begin + *subpicture.hide <= time) return nullptr;
  const bool ofMenu = place && (place->IsMenu() || place->Buttons() > 0);
  return !onlyForced || subpicture.forced || ofMenu ? &*begun : nullptr;
}

Overlay::Look Overlay::At(DvdTicks time, const Selection& selection, bool onlyForced) const {
  const Timed* found = Find(time, onlyForced);
  if (found == nullptr) return {};
  const auto& steps = found->subpicture.steps;
  const auto step = std::count_if(steps.begin(), steps.end(), [&](const Subpicture::ColorStep& one) {
    return found->begin + one.from <= time;
  });
  return {found->serial, static_cast<std::size_t>(step), Highlight(selection) ? selection : Selection()};
}

std::optional<ButtonHighlight> Overlay::Highlight(const Selection& selection) const {
  if (!place || selection.button < 1 || selection.button > std::min(place->Buttons(), 36)) return std::nullopt;
  const hli_t& buttons = place->control.hli;
  const btni_t& button = buttons.btnit[selection.button - 1];
  const Rect area{static_cast<int>(button.x_start), static_cast<int>(button.y_start),
                  static_cast<int>(button.x_end) + 1, static_cast<int>(button.y_end) + 1};
  if (button.btn_coln == 0) return std::nullopt;
  const std::uint32_t colours = buttons.btn_colit.btn_coli[button.btn_coln - 1][selection.activated ? 1 : 0];
  return ButtonHighlight{area, HighlightColors(colours)};
}

void Overlay::Draw(const PictureView& picture, DvdTicks time, const Selection& selection,
                   bool onlyForced) const {
  const Timed* found = Find(time, onlyForced);
  if (found != nullptr)
    BlendSubpicture(picture, found->subpicture, time - found->begin, palette, Highlight(selection));
}

}  // namespace quorvex
