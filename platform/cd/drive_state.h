// The CD drive's state and what changes it: a machine without a clock, a disc or sound of its own. Every
// process that uses the drive shares one such record.
#pragma once

#include <cstdint>
#include <string_view>

namespace quorvex {

enum class Transport : std::uint8_t { kStopped, kPlaying, kPaused };

// Plain data: it lies in memory shared between processes and in a file.
struct DriveState {
  static constexpr std::uint32_t kVersion = 2;
  static constexpr std::size_t kLongestPath = 1024;
  static constexpr std::uint64_t kMostClockSkew = 1000;  // between processes, in milliseconds

  std::uint32_t version = kVersion;
  bool trayOpen = false;
  Transport transport = Transport::kStopped;
  std::uint32_t mediaSerial = 1;  // another number after every change of disc or tray
  std::uint32_t playSerial = 1;   // another number after every command that starts, moves or ends the playing
  std::uint32_t player = 0;       // the process that sounds; 0 for none
  std::int32_t position = 0;      // in frames, as it was at `since`
  std::int32_t end = 0;           // where playing stops, in frames
  bool endsBadly = false;         // for the disc cannot be read from there on
  std::uint64_t since = 0;        // milliseconds of the system's clock

  // For tests: how fast the disc turns, and what is to go wrong.
  std::uint32_t speedPercent = 100;
  std::uint32_t failOpens = 0;    // how many more opens of the driver fail
  std::uint32_t claimTracks = 0;  // the number of tracks that is told instead of the disc's; 0 for the disc's
  std::uint32_t failNextPlay = 0;   // the code that the next play command fails with
  std::uint32_t notReadyPolls = 0;  // how many more questions for the mode are answered with "not ready"
  std::uint32_t unreadableTrack = 0;
  std::uint32_t answerMs = 0;  // how long the driver takes for every answer

  char image[kLongestPath] = {};  // UTF-8; empty without a disc

  [[nodiscard]] bool HasDisc() const { return image[0] != '\0'; }
  [[nodiscard]] bool MediaPresent() const { return HasDisc() && !trayOpen; }

  // Whether a record that was read makes sense.
  [[nodiscard]] bool IsValid() const;

  // Where the drive is at a time, in frames.
  [[nodiscard]] std::int32_t PositionAt(std::uint64_t now) const;
  // Ends a playing that has reached its end, or that was begun before the machine was started anew: the clock
  // counts from then. Answers whether it did.
  bool Settle(std::uint64_t now);

  // The transport; each of these ends what was under way.
  void Play(std::int32_t from, std::uint32_t process, std::uint64_t now);
  void PlayUntil(std::int32_t to, bool badly);  // of a playing that was begun
  void Pause(std::uint64_t now);
  void Stop(std::uint64_t now);
  void Seek(std::int32_t to, bool keepPaused);

  // Puts the position right by what is really heard, without disturbing anything.
  void Correct(std::int32_t heard, std::uint64_t now);

  // Lets the disc turn at another speed from now on.
  void SetSpeed(std::uint32_t percent, std::uint64_t now);

  // Tray and disc. The disc stays in a tray that is opened by a command; taking it out is the user's.
  void OpenTray();
  void CloseTray();
  void Insert(std::string_view path);  // into the tray, which closes; a disc already there is replaced
  void Eject();                        // opens a closed tray; takes the disc out of an open one

 private:
  void Halt();
};

}  // namespace quorvex
