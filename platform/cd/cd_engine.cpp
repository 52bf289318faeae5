#include "platform/cd/cd_engine.h"

#include <algorithm>
#include <cstdlib>
#include <thread>
#include <utility>
#include <vector>

#include "platform/cd/mci_driver_calls.h"
#include "platform/cd/open_image.h"
#include "platform/cd/play_range.h"

namespace quorvex {
namespace {

constexpr DWORD kLookMs = 50;        // how often a playing is held against the drive's state
constexpr int kToleratedFrames = 4;  // between what the clock says and what is heard
constexpr std::uint32_t kRealSpeed = 100;
constexpr DWORD kLongestSoundChangeMs = 1000;
constexpr DWORD kSoundLookMs = 5;
// A tenth of a second a buffer: a stalled machine has most of a second before the sound breaks, and a pause
// is still prompt, for it discards what is waiting.
constexpr std::size_t kBufferBytes = std::size_t{8} * kAudioSectorBytes;
constexpr std::size_t kBuffers = 8;

// A playing goes on after its device was closed, so the driver must then stay in its process.
void PinModule() {
  HMODULE module = nullptr;
  ::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                       reinterpret_cast<LPCWSTR>(&PinModule), &module);
}

int SectorsHeard(WaveOutput& output) {
  return static_cast<int>(output.FramesPlayed() * output.Format().FrameBytes() / kAudioSectorBytes);
}

std::uint32_t ModeOf(const DriveState& state) {
  if (state.trayOpen) return MCI_MODE_OPEN;
  if (!state.HasDisc() || state.notReadyPolls > 0) return MCI_MODE_NOT_READY;
  switch (state.transport) {
    case Transport::kPlaying: return MCI_MODE_PLAY;
    case Transport::kPaused: return MCI_MODE_PAUSE;
    case Transport::kStopped: break;
  }
  return MCI_MODE_STOP;
}

}  // namespace

CdEngine& CdEngine::Instance() {
  // Never destroyed: the threads that play may still run while the process ends.
  static CdEngine& engine = *new CdEngine;
  return engine;
}

bool CdEngine::MayOpen() {
  if (!drive.IsAvailable()) return false;
  const SharedDrive::Turn state(drive);
  if (state->failOpens == 0) return true;
  --state->failOpens;
  return false;
}

CdEngine::Status CdEngine::Look() {
  const SharedDrive::Turn state(drive);
  return {ModeOf(*state), state->MediaPresent() && state->notReadyPolls == 0, state->mediaSerial,
          state->PositionAt(DriveClock()), state->claimTracks};
}

CdEngine::Status CdEngine::Poll() {
  const Status status = Look();
  const SharedDrive::Turn state(drive);
  if (state->notReadyPolls > 0) --state->notReadyPolls;
  return status;
}

std::shared_ptr<DiscImage> CdEngine::Disc() {
  const std::scoped_lock lock(discMutex);
  std::string path;
  {
    const SharedDrive::Turn state(drive);
    if (!state->MediaPresent()) return nullptr;
    if (state->mediaSerial == discSerial) return disc;
    discSerial = state->mediaSerial;
    path = state->image;
  }
  OpenedImage opened = OpenDiscImage(path);
  auto* image = std::get_if<std::unique_ptr<DiscImage>>(&opened);
  disc = image != nullptr ? std::move(*image) : nullptr;
  return disc;
}

MCIERROR CdEngine::Play(std::optional<int> from, std::optional<int> to, Notify whom) {
  const std::shared_ptr<DiscImage> image = Disc();
  const std::scoped_lock lock(mutex);
  const SharedDrive::Turn state(drive);
  if (!image || !state->MediaPresent() || state->notReadyPolls > 0) return MCIERR_DEVICE_NOT_READY;
  if (const std::uint32_t code = std::exchange(state->failNextPlay, 0); code != 0) return code;
  const std::uint64_t now = DriveClock();
  int begin = from.value_or(state->PositionAt(now));
  if (!from && begin >= image->LeadOut()) begin = 0;  // a disc that was played to its end starts again
  const int end = to.value_or(image->LeadOut());
  if (end < begin) return MCIERR_OUTOFRANGE;
  const std::optional<PlayEnd> reachable =
      EndOfPlay({image->Tracks(), image->LeadOut()}, begin, end, static_cast<int>(state->unreadableTrack));
  if (!reachable) return MCIERR_HARDWARE;

  Tell(whom.window != nullptr ? MCI_NOTIFY_SUPERSEDED : MCI_NOTIFY_ABORTED);
  const bool goesOn = !from && state->transport == Transport::kPlaying;
  if (!goesOn) state->Play(begin, ::GetCurrentProcessId(), now);
  state->PlayUntil(reachable->frame, reachable->badly);
  notify = whom;
  notifySerial = state->playSerial;
  const bool ours = state->player == ::GetCurrentProcessId();
  // What another process plays on is only waited for here.
  if (!goesOn || !ours) StartThread({state->playSerial, state->image, begin, ours});
  return 0;
}

MCIERROR CdEngine::Pause() {
  const std::scoped_lock lock(mutex);
  const SharedDrive::Turn state(drive);
  if (!state->MediaPresent()) return MCIERR_DEVICE_NOT_READY;
  Tell(MCI_NOTIFY_ABORTED);
  state->Pause(DriveClock());
  return 0;
}

// Where the playing that is paused was to end; none when somebody has moved beyond it since, or when it could
// not be reached.
std::optional<int> CdEngine::EndOfPaused() {
  const SharedDrive::Turn state(drive);
  return state->position < state->end && !state->endsBadly ? std::optional(state->end) : std::nullopt;
}

MCIERROR CdEngine::Resume() {
  if (Look().mode != MCI_MODE_PAUSE) return Look().mediaPresent ? 0 : MCIERR_DEVICE_NOT_READY;
  return Play(std::nullopt, EndOfPaused(), {});
}

MCIERROR CdEngine::Stop() {
  const std::scoped_lock lock(mutex);
  const SharedDrive::Turn state(drive);
  if (!state->MediaPresent()) return MCIERR_DEVICE_NOT_READY;
  Tell(MCI_NOTIFY_ABORTED);
  state->Stop(DriveClock());
  return 0;
}

MCIERROR CdEngine::Seek(int to) {
  const std::scoped_lock lock(mutex);
  const SharedDrive::Turn state(drive);
  if (!state->MediaPresent()) return MCIERR_DEVICE_NOT_READY;
  Tell(MCI_NOTIFY_ABORTED);
  state->Seek(to, true);
  return 0;
}

void CdEngine::OpenTray() {
  const std::scoped_lock lock(mutex);
  const SharedDrive::Turn state(drive);
  if (!state->trayOpen) Tell(MCI_NOTIFY_ABORTED);
  state->OpenTray();
}

void CdEngine::CloseTray() {
  const SharedDrive::Turn state(drive);
  state->CloseTray();
}

void CdEngine::Forget(MCIDEVICEID device) {
  const std::scoped_lock lock(mutex);
  if (notify.device == device) Tell(MCI_NOTIFY_ABORTED);
}

void CdEngine::AwaitSound() const {
  for (DWORD waited = 0; soundChanges > 0 && waited < kLongestSoundChangeMs; waited += kSoundLookMs)
    ::Sleep(kSoundLookMs);
}

void CdEngine::Supersede(MCIDEVICEID device) {
  const std::scoped_lock lock(mutex);
  if (notify.device == device) Tell(MCI_NOTIFY_SUPERSEDED);
}

void CdEngine::Tell(WPARAM what) {
  const Notify told = std::exchange(notify, {});
  if (told.window != nullptr) ::mciDriverNotify(told.window, told.device, static_cast<UINT>(what));
}

void CdEngine::StartThread(const Stretch& stretch) {
  PinModule();
  if (stretch.ours) ++Instance().soundChanges;  // until its thread has opened it
  std::thread([stretch] { Instance().Run(stretch); }).detach();
}

void CdEngine::Run(const Stretch& stretch) {
  Finish(stretch, stretch.ours ? PlaySound(stretch) : WaitSilently(stretch));
}

// Tells who waits for this playing how it ended. A command of this process has done so itself.
void CdEngine::Finish(const Stretch& stretch, End end) {
  const std::scoped_lock lock(mutex);
  if (notifySerial != stretch.serial) return;
  const bool mediaGone = !Look().mediaPresent;
  const WPARAM interrupted = mediaGone ? MCI_NOTIFY_FAILURE : MCI_NOTIFY_ABORTED;
  Tell(end == End::kReached ? MCI_NOTIFY_SUCCESSFUL : end == End::kFailed ? MCI_NOTIFY_FAILURE : interrupted);
}

// Follows a playing by the clock alone: that of another process, one at a test's speed, or one without a
// sound device.
CdEngine::End CdEngine::WaitSilently(const Stretch& stretch) {
  for (;; ::Sleep(kLookMs)) {
    const SharedDrive::Turn state(drive);
    if (state->playSerial != stretch.serial) return End::kInterrupted;
    if (state->transport != Transport::kPlaying) return state->endsBadly ? End::kFailed : End::kReached;
  }
}

CdEngine::End CdEngine::PlaySound(const Stretch& stretch) {
  OpenedImage opened = OpenDiscImage(stretch.image);
  auto* image = std::get_if<std::unique_ptr<DiscImage>>(&opened);
  auto output = std::make_unique<WaveOutput>(WaveFormat{}, kBufferBytes, kBuffers);
  --soundChanges;
  const End end = FeedSound(stretch, image != nullptr ? image->get() : nullptr, *output);
  ++soundChanges;
  output.reset();
  --soundChanges;
  return end;
}

// Feeds what is to be heard, until it is all heard or no longer to be.
CdEngine::End CdEngine::FeedSound(const Stretch& stretch, DiscImage* image, WaveOutput& output) {
  int next = stretch.from;
  while (output.IsOpen()) {
    const std::optional<int> end = HoldAgainst(stretch, stretch.from + SectorsHeard(output));
    if (!end) break;
    const bool fed = output.Feed([&](std::span<std::byte> sound) {
      const int count = std::min(static_cast<int>(sound.size()) / kAudioSectorBytes, *end - next);
      if (count <= 0) return 0;
      const int bytes = count * kAudioSectorBytes;
      if (image == nullptr || !image->ReadSound(next, sound.first(static_cast<std::size_t>(bytes))))
        return -1;
      next += count;
      return bytes;
    });
    if (!fed) return BreakOff(stretch);
    if (next >= *end && output.IsDrained()) return ReachEnd(stretch);
    output.Wait(kLookMs);
  }
  return WaitSilently(stretch);
}

// Puts the drive's position right by what is heard, and answers where this playing ends; nothing when it is
// no longer one to be heard.
std::optional<int> CdEngine::HoldAgainst(const Stretch& stretch, int heard) {
  const SharedDrive::Turn state(drive);
  if (state->playSerial != stretch.serial || state->speedPercent != kRealSpeed) return std::nullopt;
  const std::uint64_t now = DriveClock();
  const bool astray = std::abs(heard - state->PositionAt(now)) > kToleratedFrames;
  if (astray && state->transport == Transport::kPlaying) state->Correct(heard, now);
  return state->end;
}

// The image's file failed, or the sound device did.
CdEngine::End CdEngine::BreakOff(const Stretch& stretch) {
  const SharedDrive::Turn state(drive);
  if (state->playSerial != stretch.serial) return End::kInterrupted;
  state->Stop(DriveClock());
  return End::kFailed;
}

CdEngine::End CdEngine::ReachEnd(const Stretch& stretch) {
  const SharedDrive::Turn state(drive);
  if (state->playSerial != stretch.serial) return End::kInterrupted;
  if (state->transport == Transport::kPlaying) state->Correct(state->end, DriveClock());
  state->Settle(DriveClock());
  return state->endsBadly ? End::kFailed : End::kReached;
}

}  // namespace quorvex
