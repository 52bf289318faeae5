// What is laid over a disc's picture: subtitles and the buttons of menus with their highlight. Belongs to the
// thread that makes pictures.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "platform/dvd/play_queue.h"
#include "platform/dvd/subpicture.h"

namespace quorvex {

class Overlay {
 public:
  // Which button is marked, and as what.
  struct Selection {
    int button = 0;
    bool activated = false;
    friend bool operator==(const Selection&, const Selection&) = default;
  };

  void SetPalette(const SubpicturePalette& colours) { palette = colours; }
  void SetPlace(std::shared_ptr<const Place> reached) { place = std::move(reached); }

  // A piece of the units of a subpicture stream, which may come long before its time.
  void Feed(const PlayItem& piece);

  // The stretch of the timeline that is shown: the times below are its own.
  void SetStretch(int shown) { stretch = shown; }

  // What was before does not count any more.
  void Forget();

  // Tells pictures apart: what is to be seen at a time looks the same while this stays the same.
  struct Look {
    std::uint64_t subpicture = 0;
    std::size_t step = 0;
    Selection selection;
    friend bool operator==(const Look&, const Look&) = default;
  };
  [[nodiscard]] Look At(DvdTicks time, const Selection& selection, bool onlyForced) const;

  // Draws what is to be seen into a picture of the video's size.
  void Draw(const PictureView& picture, DvdTicks time, const Selection& selection, bool onlyForced) const;

 private:
  struct Timed {
    std::uint64_t serial = 0;
    int stretch = 0;
    DvdTicks begin = 0;
    Subpicture subpicture;
  };

  void Finish(int ofStretch);
  [[nodiscard]] const Timed* Find(DvdTicks time, bool onlyForced) const;
  [[nodiscard]] std::optional<ButtonHighlight> Highlight(const Selection& selection) const;

  SubpicturePalette palette{};
  std::shared_ptr<const Place> place;
  int stretch = 0;
  int stream = -1;
  std::vector<std::uint8_t> unit;  // as far as it has come
  DvdTicks unitTime = 0;
  std::vector<Timed> timed;  // the last few, in the order of their times
  std::uint64_t serials = 0;
};

}  // namespace quorvex
