#include "platform/cd/drive_state.h"

#include <algorithm>
#include <cstring>

#include "platform/cd/disc_plan.h"

namespace quorvex {
namespace {

// Whether the byte that was read for a truth value is one.
bool IsTruth(const bool& value) {
  unsigned char byte = 0;
  std::memcpy(&byte, &value, 1);
  return byte <= 1;
}

bool IsOnDisc(std::int32_t frame) { return frame >= 0 && frame <= kMostFrames; }

}  // namespace

bool DriveState::IsValid() const {
  return version == kVersion && IsTruth(trayOpen) && IsTruth(endsBadly) && transport <= Transport::kPaused &&
         speedPercent > 0 && std::memchr(image, '\0', sizeof image) != nullptr && IsOnDisc(position) &&
         IsOnDisc(end);
}

std::int32_t DriveState::PositionAt(std::uint64_t now) const {
  if (transport != Transport::kPlaying || now <= since) return position;
  const std::uint64_t frames = (now - since) * speedPercent * kFramesPerSecond / 100 / 1000;
  return static_cast<std::int32_t>(std::min<std::uint64_t>(
      static_cast<std::uint64_t>(position) + frames, static_cast<std::uint64_t>(std::max(end, position))));
}

bool DriveState::Settle(std::uint64_t now) {
  if (transport == Transport::kPlaying && since > now + kMostClockSkew) {
    Stop(now);
    return true;
  }
  if (transport != Transport::kPlaying || PositionAt(now) < end) return false;
  position = end;
  transport = Transport::kStopped;
  player = 0;
  return true;
}

void DriveState::Halt() {
  transport = Transport::kStopped;
  player = 0;
  ++playSerial;
}

void DriveState::Play(std::int32_t from, std::uint32_t process, std::uint64_t now) {
  Halt();
  transport = Transport::kPlaying;
  player = process;
  position = from;
  since = now;
}

void DriveState::PlayUntil(std::int32_t to, bool badly) {
  end = to;
  endsBadly = badly;
}

void DriveState::Pause(std::uint64_t now) {
  if (transport != Transport::kPlaying) return;
  position = PositionAt(now);
  Halt();
  transport = Transport::kPaused;
}

void DriveState::Stop(std::uint64_t now) {
  position = PositionAt(now);
  Halt();
}

void DriveState::Seek(std::int32_t to, bool keepPaused) {
  const bool paused = keepPaused && transport == Transport::kPaused;
  Halt();
  position = std::clamp(to, 0, kMostFrames);
  if (paused) transport = Transport::kPaused;
}

void DriveState::Correct(std::int32_t heard, std::uint64_t now) {
  position = std::clamp(heard, 0, end);
  since = now;
}

void DriveState::SetSpeed(std::uint32_t percent, std::uint64_t now) {
  position = PositionAt(now);
  since = now;
  speedPercent = percent;
}

void DriveState::OpenTray() {
  if (trayOpen) return;
  Halt();
  trayOpen = true;
  position = 0;
  ++mediaSerial;
}

void DriveState::CloseTray() {
  if (!trayOpen) return;
  trayOpen = false;
  ++mediaSerial;
}

void DriveState::Insert(std::string_view path) {
  Halt();
  const std::size_t length = std::min(path.size(), sizeof image - 1);
  std::memset(image, 0, sizeof image);
  std::memcpy(image, path.data(), length);
  trayOpen = false;
  position = 0;
  unreadableTrack = 0;
  ++mediaSerial;
}

void DriveState::Eject() {
  if (!trayOpen) {
    OpenTray();
    return;
  }
  std::memset(image, 0, sizeof image);
  ++mediaSerial;
}

}  // namespace quorvex
