// The disc's virtual machine (libdvdnav): it says what is to be played next, and takes the user's wishes.
// Used by one thread at a time.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "platform/dvd/pack_demuxer.h"
#include "platform/dvd/place.h"

struct dvdnav_s;

namespace quorvex {

// What comes next on a disc.
struct DiscStep {
  enum class Kind {
    kNothing,
    kSector,      // of the streams: `sector`
    kPlace,       // a new place: ask for it
    kJump,        // what follows does not continue what was before
    kPalette,     // `palette` from here on
    kStreams,     // audio and subpicture streams may be others from here on
    kHighlight,   // another button is selected
    kStill,       // the picture stands for `seconds`
    kDrain,       // the machine waits until all of it has been played
    kEnd,         // the disc has ended
    kUnreadable,  // nothing could be read here
  };
  static constexpr int kForeverSeconds = 255;

  Kind kind = Kind::kNothing;
  std::span<const std::uint8_t> sector;  // until the next step
  std::span<const std::uint32_t> palette;
  int seconds = 0;
};

enum class ButtonMove { kUp, kDown, kLeft, kRight };

// The menus, by the numbers that applications use.
enum class DiscMenu { kTitle = 2, kRoot = 3, kSubpicture = 4, kAudio = 5, kAngle = 6, kChapter = 7 };

class Navigator {
 public:
  // `disc`: an image or the folder with a disc's files, in UTF-8.
  explicit Navigator(std::string disc) : path(std::move(disc)) {}
  Navigator(const Navigator&) = delete;
  Navigator& operator=(const Navigator&) = delete;
  ~Navigator() { Close(); }

  // Opens the disc anew: it begins with what it plays first. False when it is none, or its tables are damaged
  // beyond use.
  bool Open();
  void Close();
  [[nodiscard]] bool IsOpen() const { return machine != nullptr; }

  // The bytes of VIDEO_TS.IFO, or of its copy.
  std::vector<std::uint8_t> ReadManagerTables();

  // Whether the disc comes to something that it plays. Open anew afterwards.
  bool ComesToPlay();

  // Whether the disc's films are scrambled, as far as their first sectors show.
  bool IsScrambled(int titleSets);

  DiscStep Next();
  Place Look();
  // After kStill and kDrain: goes on.
  void EndStill();
  void EndDrain();

  // The streams that are to be shown: numbers as they lie on the disc, none: -1.
  [[nodiscard]] int AudioStream();
  struct SubpictureStream {
    int number = -1;
    bool onlyForced = false;
  };
  [[nodiscard]] SubpictureStream SubpictureToShow();

  // The user's wishes. False when the disc has no such thing, or cannot go there.
  bool PlayTitle(int title);
  bool PlayChapter(int title, int chapter);
  bool PlayTime(int title, DvdTicks time);
  bool SearchTime(DvdTicks time);
  bool PreviousProgram();
  bool TopProgram();
  bool NextProgram();
  bool GoUp();
  // `shown`: where the title is resumed.
  bool CallMenu(DiscMenu menu, const Place& shown);
  bool ReturnTo(const Place& place);
  bool Resume();
  bool MoveButton(const pci_t& shown, ButtonMove move);
  bool SelectButton(const pci_t& shown, int button);
  bool ActivateButton(const pci_t& shown);
  void SelectAudio(int stream);
  void SelectSubpicture(int stream, bool shown);
  bool SelectAngle(int angle);
  void SetParentalLevel(int level);
  void SetCountry(std::uint16_t letters);
  void SetMenuLanguage(std::uint16_t letters);

  // Whether the last wish leads elsewhere.
  [[nodiscard]] bool HasJumped();

  // How many sectors from the beginning of the video unit hold its first picture.
  [[nodiscard]] std::uint32_t KeyPictureSectors();

  // Goes on behind what cannot be read, the further the more attempts were made. False when there is no more.
  bool SkipDamage(int attempts);

  // Goes on with the video unit before the one that began at the last place, within its cell or at the end of
  // the cell before. False at the title's beginning.
  bool StepBack();

 private:
  template <typename Call>
  bool Ask(Call call);

  const std::string path;
  dvdnav_s* machine = nullptr;
  std::vector<std::uint8_t> block;
  std::vector<std::uint32_t> colours;
};

}  // namespace quorvex
