#include "tests/fuzz/disc_walk.h"

#include <algorithm>
#include <array>
#include <vector>

#include "platform/common/line21_decoder.h"
#include "platform/dvd/opened_disc.h"
#include "platform/dvd/overlay.h"
#include "platform/dvd/stream_kinds.h"
#include "platform/dvd/unit_clock.h"

namespace quorvex {
namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr int kStepsBetweenWishes = 25;
constexpr int kLastSteps = 200;
constexpr int kMostBadSteps = 20;

struct Wish {
  std::uint8_t kind = 0;
  std::uint8_t value = 0;
};

// Takes numbers off the front; 0 at the end.
class Orders {
 public:
  explicit Orders(Bytes given) : left(given) {}

  [[nodiscard]] bool AtEnd() const { return left.empty(); }
  std::uint8_t Byte() {
    if (left.empty()) return 0;
    const std::uint8_t byte = left.front();
    left = left.subspan(1);
    return byte;
  }
  std::size_t Word() {
    const std::size_t high = Byte();
    return high << 8 | Byte();
  }
  Bytes Take(std::size_t count) {
    const Bytes taken = left.first(std::min(count, left.size()));
    left = left.subspan(taken.size());
    return taken;
  }

 private:
  Bytes left;
};

// Obeys what the orders say of the disc's bytes, and collects the wishes.
class Damage {
 public:
  explicit Damage(MutableDisc& damaged) : disc(damaged) {}

  std::vector<Wish> Obey(Bytes orders) {
    Orders left(orders);
    while (!left.AtEnd()) ObeyOne(left);
    return std::move(wishes);
  }

 private:
  using Region = MutableDisc::Region;

  // Tables are what most depends on: they come up more often.
  const Region& PickRegion(Orders& left) {
    constexpr std::size_t kTables = 3;
    const std::size_t number = left.Byte() % (disc.Regions().size() + 3 * kTables);
    return disc.Regions()[number < disc.Regions().size() ? number : number % kTables];
  }

  static std::size_t PickSector(const Region& region, Orders& left) {
    return region.first + left.Word() % std::max<std::size_t>(region.count, 1);
  }

  // Also in the copy, which would be read instead.
  void Write(const Region& region, std::size_t sector, std::size_t offset, Bytes bytes) {
    disc.Write(sector, offset, bytes);
    if (!region.name.ends_with(".IFO")) return;
    const Region& copy = disc.RegionOf(region.name.substr(0, region.name.size() - 3) + "BUP");
    disc.Write(copy.first + sector - region.first, offset, bytes);
  }

  void ObeyOne(Orders& left) {
    const std::uint8_t order = left.Byte();
    const std::size_t size = 1 + (order >> 4);
    switch (order & 0xF) {
      case 8: Spoil(left, size); break;
      case 9: Repeat(left, size); break;
      case 10: Move(left); break;
      case 11: disc.Cut(PickSector(PickRegion(left), left)); break;
      case 4:
      case 5:
      case 6: ChangeUnit(left, size); break;
      case 0:
      case 1:
      case 2:
      case 3: {
        const Region& region = PickRegion(left);
        const std::size_t sector = PickSector(region, left);
        const std::size_t offset = left.Word() % MutableDisc::kSector;
        Write(region, sector, offset, left.Take(size));
        break;
      }
      default: wishes.push_back({order, left.Byte()}); break;
    }
  }

  void ChangeUnit(Orders& left, std::size_t size) {
    const auto& films = disc.Regions();
    const Region& film = films[left.Byte() % films.size()];
    if (film.units.empty()) return;
    const std::size_t unit = film.units[left.Byte() % film.units.size()];
    const std::size_t offset = left.Word() % MutableDisc::kSector;
    disc.Write(unit, offset, left.Take(size));
  }

  void Spoil(Orders& left, std::size_t count) {
    const std::size_t first = PickSector(PickRegion(left), left);
    for (std::size_t i = 0; i < count; ++i) disc.Spoil(first + i);
  }

  void Repeat(Orders& left, std::size_t count) {
    const Region& region = PickRegion(left);
    const std::size_t first = PickSector(region, left);
    const std::vector<std::uint8_t> bytes(MutableDisc::kSector, left.Byte());
    for (std::size_t i = 0; i < count; ++i) Write(region, first + i, 0, bytes);
  }

  void Move(Orders& left) {
    const std::size_t source = PickSector(PickRegion(left), left);
    const Region& region = PickRegion(left);
    Write(region, PickSector(region, left), 0, disc.Sector(source));
  }

  MutableDisc& disc;
  std::vector<Wish> wishes;
};

// Plays a disc as the platform layer's player does, without showing it.
class Walk {
 public:
  explicit Walk(OpenedDisc& walked) : disc(walked), navigator(*walked.navigator) {
    captions.SetChannel(Line21Channel::kCaption1);
  }

  int Run(const std::vector<Wish>& wishes) {
    AskTables();
    for (const Wish& wish : wishes) {
      Go(kStepsBetweenWishes);
      if (!navigator.IsOpen() && !navigator.Open()) break;
      Do(wish);
      (void)navigator.HasJumped();
      TakeStreams();
    }
    Go(kLastSteps);
    return sectors;
  }

 private:
  void AskTables() {
    for (int set = 0; set <= static_cast<int>(disc.tables.titleSets.size()) + 1; ++set) {
      const StreamAttributes& attributes = disc.tables.Of(set);
      for (const auto part : {StreamAttributes::Part::kMenu, StreamAttributes::Part::kTitle}) {
        for (int i = 0; i < attributes.AudioCount(part); ++i) LanguageOf(attributes.AudioOf(part, i));
        for (int i = 0; i < attributes.SubpictureCount(part); ++i)
          LanguageOf(attributes.SubpictureOf(part, i));
      }
    }
  }

  void Go(int steps) {
    for (int i = 0; i < steps && navigator.IsOpen() && !ended; ++i) Step();
    ended = false;
  }

  void Step() {
    const DiscStep step = navigator.Next();
    switch (step.kind) {
      case DiscStep::Kind::kSector: TakeSector(step.sector); break;
      case DiscStep::Kind::kPlace: TakePlace(); break;
      case DiscStep::Kind::kPalette:
        std::copy_n(step.palette.begin(), palette.size(), palette.begin());
        overlay.SetPalette(palette);
        break;
      case DiscStep::Kind::kStreams: TakeStreams(); break;
      case DiscStep::Kind::kHighlight: selected = navigator.Look().SelectedButton(); break;
      case DiscStep::Kind::kStill: navigator.EndStill(); break;
      case DiscStep::Kind::kDrain: navigator.EndDrain(); break;
      case DiscStep::Kind::kEnd:
        navigator.Close();
        ended = true;
        break;
      case DiscStep::Kind::kUnreadable:
        ended = ++badSteps > kMostBadSteps || !navigator.SkipDamage(badSteps);
        break;
      case DiscStep::Kind::kJump:
      case DiscStep::Kind::kNothing: break;
    }
  }

  void TakePlace() {
    badSteps = 0;
    place = std::make_shared<const Place>(navigator.Look());
    selected = place->SelectedButton();
    units.Begin(place->control.pci_gi.vobu_s_ptm, place->control.pci_gi.vobu_e_ptm);
    overlay.SetPlace(place);
    ShapeAt(disc.tables, *place);
    (void)navigator.KeyPictureSectors();
    Draw();
  }

  void TakeStreams() {
    (void)navigator.AudioStream();
    SoundKindAt(disc.tables, navigator.Look());
    subpicture = navigator.SubpictureToShow();
  }

  void TakeSector(Bytes sector) {
    badSteps = 0;
    ++sectors;
    for (const PackPiece& piece : SplitPack(sector)) {
      if (piece.kind == DvdStreamKind::kVideo) FeedCaptions(piece.bytes);
      if (piece.kind != DvdStreamKind::kSubpicture) continue;
      PlayItem item{.kind = PlayItem::Kind::kData, .stream = piece.kind, .number = piece.number};
      item.bytes.assign(piece.bytes.begin(), piece.bytes.end());
      if (piece.pts) item.time = units.Time(*piece.pts);
      overlay.Feed(item);
    }
  }

  // What the decoder of the video finds in its user data.
  void FeedCaptions(Bytes video) {
    constexpr std::array<std::uint8_t, 6> kMark{0, 0, 1, 0xB2, 'C', 'C'};
    const auto found = std::search(video.begin(), video.end(), kMark.begin(), kMark.end());
    const Bytes data = video.subspan(static_cast<std::size_t>(found - video.begin()));
    for (std::size_t at = kMark.size() + 3; at + 2 < data.size() && data[at] >= 0xFE; at += 3)
      captions.Feed(data[at] == 0xFF ? 1 : 2, data[at + 1], data[at + 2]);
  }

  // What is laid over the picture, where it looks different from before.
  void Draw() {
    const Overlay::Look look = overlay.At(units.Start(), {selected, false}, false);
    if (look == drawn) return;
    drawn = look;
    constexpr int kPixel = 4;
    picture.resize(std::size_t{720} * 576 * kPixel);
    const PictureView view{picture.data(), std::ptrdiff_t{720} * kPixel, 720, 576};
    overlay.Draw(view, units.Start() + kTicksPerSecond / 2, {selected, true}, subpicture.onlyForced);
  }

  void Do(const Wish& wish) {
    const int value = wish.value;
    const Place shown = place ? *place : Place();
    switch ((wish.kind >> 4) + ((wish.kind & 3) << 4)) {
      case 0: navigator.PlayTitle(value); break;
      case 1: navigator.PlayChapter(value >> 4, value & 15); break;
      case 2: navigator.PlayTime(value >> 6, (value & 63) * kTicksPerSecond / 8); break;
      case 3: navigator.SearchTime(value * kTicksPerSecond / 16); break;
      case 4: navigator.PreviousProgram(); break;
      case 5: navigator.TopProgram(); break;
      case 6: navigator.NextProgram(); break;
      case 7: navigator.GoUp(); break;
      case 8: navigator.CallMenu(static_cast<DiscMenu>(2 + value % 6), shown); break;
      case 9: navigator.ReturnTo(shown); break;
      case 10: navigator.Resume(); break;
      case 11: navigator.MoveButton(shown.control, static_cast<ButtonMove>(value % 4)); break;
      case 12: navigator.SelectButton(shown.control, value); break;
      case 13:
      case 14: navigator.ActivateButton(shown.control); break;
      case 15: navigator.SelectAudio(value % 16); break;
      case 16: navigator.SelectSubpicture(value % 64, value >= 64); break;
      case 17: navigator.SelectAngle(value); break;
      case 18: navigator.SetParentalLevel(value % 16); break;
      case 19: navigator.StepBack(); break;
      case 20: navigator.SetMenuLanguage(static_cast<std::uint16_t>(value << 8 | value)); break;
      case 21: navigator.Open(); break;
      default: break;
    }
  }

  OpenedDisc& disc;
  Navigator& navigator;
  Overlay overlay;
  SubpicturePalette palette{};
  Line21Decoder captions;
  UnitClock units;
  std::shared_ptr<const Place> place;
  Navigator::SubpictureStream subpicture;
  std::vector<std::uint8_t> picture;
  Overlay::Look drawn;
  int selected = 0;
  int sectors = 0;
  int badSteps = 0;
  bool ended = false;
};

}  // namespace

WalkResult WalkDisc(MutableDisc& disc, std::span<const std::uint8_t> orders) {
  const std::vector<Wish> wishes = Damage(disc).Obey(orders);
  WalkResult result;
  OpenedDisc opened;
  result.opened = OpenDisc(disc.Path(), opened) == DiscFault::kNone;
  if (result.opened) result.sectors = Walk(opened).Run(wishes);
  opened = {};
  disc.Restore();
  return result;
}

}  // namespace quorvex
