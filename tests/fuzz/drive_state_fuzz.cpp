// The drive's record, as it is found in its file: what is valid can be worked, and stays valid.
#include "platform/cd/drive_state.h"

#include <cstring>

#include "platform/cd/disc_plan.h"
#include "tests/fuzz/fuzz_target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  using quorvex::Require;
  constexpr std::uint64_t kNow = 1'000'000;
  constexpr std::uint64_t kLater = 2'000'000;
  quorvex::DriveState state;
  std::memcpy(static_cast<void*>(&state), bytes, std::min(size, sizeof state));
  if (!state.IsValid()) return 0;
  const auto check = [&state](std::uint64_t now) {
    Require(state.IsValid(), "the drive stays valid");
    Require(state.PositionAt(now) >= 0 && state.PositionAt(now) <= quorvex::kMostFrames,
            "the drive is on the disc");
  };
  state.Settle(kNow);
  check(kNow);
  state.SetSpeed(300, kNow);
  check(kLater);
  state.Pause(kLater);
  check(kLater);
  if (state.MediaPresent()) state.Play(0, 1, kLater);
  state.PlayUntil(quorvex::kMostFrames, false);
  state.OpenTray();
  check(kLater);
  state.Insert("d.cue");
  Require(state.HasDisc() && state.MediaPresent(), "a disc that was put in is there");
  return 0;
}
