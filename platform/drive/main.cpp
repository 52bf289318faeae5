// qvdrive: the hand at the CD drive and the capture cards. Puts disc images in, works the tray, says what the
// drive does, makes it part of a Windows, plugs cards in and out; and makes them misbehave, for tests.
#include <windows.h>

#include <mmsystem.h>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <iterator>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/full_path.h"
#include "platform/cd/open_image.h"
#include "platform/cd/shared_drive.h"
#include "platform/cd/time_format.h"
#include "platform/cd/utf8_path.h"
#include "platform/cd/video_disc.h"
#include "platform/drive/card_commands.h"

namespace quorvex {
namespace {

constexpr char kUsage[] =
    "qvdrive insert FILE   put a disc image in and close the tray (CUE, TOC, NRG, ISO or a DVD's folder; "
    "Windows or Unix path)\n"
    "qvdrive eject         open the tray; take the disc out of an open one\n"
    "qvdrive close         close the tray\n"
    "qvdrive status        say what is in the drive and what it does, one name=value a line\n"
    "qvdrive install       make the drive this Windows' CD-audio device (qvcd.dll beside this program)\n"
    "qvdrive uninstall     give the driver that was there before its place back\n"
    "For tests:\n"
    "qvdrive speed PERCENT          let the disc turn faster or slower (100 is real time; sounds only then)\n"
    "qvdrive fail-open N            let the next N opens of the drive fail\n"
    "qvdrive claim-tracks N         tell this number of tracks instead of the disc's (0: the disc's)\n"
    "qvdrive fail-play [CODE]       let the next play command fail, with an MCI error code\n"
    "qvdrive not-ready N            answer the next N questions for the mode with \"not ready\"\n"
    "qvdrive unreadable TRACK       make a track of this disc unreadable (0: none)\n"
    "qvdrive answer-in MS           let the drive take so long for every answer (0: none)\n";

int Complain(const std::string& text) {
  std::fprintf(stderr, "qvdrive: %s\n", text.c_str());
  return 1;
}

int Insert(SharedDrive& drive, const std::string& name) {
  const std::string path = FullPath(name);
  if (path.empty() || path.size() >= DriveState::kLongestPath)
    return Complain(name + ": the path is too long");
  const OpenedImage image = OpenDiscImage(path);
  if (const auto* error = std::get_if<DiscError>(&image)) return Complain(name + ": " + error->text);
  SharedDrive::Turn(drive)->Insert(path);
  return 0;
}

std::string Clock(int frames) {
  char text[16];
  std::snprintf(text, sizeof text, "%02d:%02d", frames / kFramesPerSecond / 60,
                frames / kFramesPerSecond % 60);
  return text;
}

const char* ModeName(const DriveState& state) {
  switch (state.transport) {
    case Transport::kPlaying: return "playing";
    case Transport::kPaused: return "paused";
    case Transport::kStopped: break;
  }
  return "stopped";
}

void PrintPlace(const DriveState& state, const DiscImage& disc) {
  const DiscTimes times{disc.Tracks(), disc.LeadOut()};
  const int position = state.PositionAt(DriveClock());
  const int track = times.TrackAt(position);
  const int start = times.tracks[static_cast<std::size_t>(track - 1)].start;
  std::printf("tracks=%zu\nlength=%s\nmode=%s\ntrack=%d\ntime=%s\n", times.tracks.size(),
              Clock(times.leadOut).c_str(), ModeName(state), track,
              Clock(std::max(position - start, 0)).c_str());
}

const char* KindName(const DiscImage& disc, const char* image) {
  if (disc.Tracks().front().audio) return "audio";
  return HoldsVideoDisc(PathFromUtf8(image)) ? "dvd" : "data";
}

int PrintStatus(SharedDrive& drive) {
  const DriveState state = *SharedDrive::Turn(drive);
  std::printf("tray=%s\n", state.trayOpen ? "open" : "closed");
  if (!state.HasDisc()) {
    std::puts("disc=none");
    return 0;
  }
  const OpenedImage image = OpenDiscImage(state.image);
  const auto* disc = std::get_if<std::unique_ptr<DiscImage>>(&image);
  const char* kind = disc == nullptr ? "unreadable" : KindName(**disc, state.image);
  std::printf("disc=%s\nimage=%s\n", kind, state.image);
  if (disc != nullptr && !state.trayOpen) PrintPlace(state, **disc);
  return 0;
}

std::optional<std::uint32_t> Number(std::string_view text) {
  std::uint32_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

// MCI takes the driver of a device type from system.ini: Wine from its section "mci"; Windows, which keeps
// these sections in the registry, from "MCI32". What stood there before is noted in a section of its own.
constexpr char kSystemFile[] = "system.ini";
constexpr const char* kMciSections[] = {"mci", "MCI32"};
constexpr char kDeviceType[] = "cdaudio";
constexpr char kNotes[] = "Quorvex";

std::string SystemValue(const char* section, const char* key) {
  char value[MAX_PATH] = "";
  ::GetPrivateProfileStringA(section, key, "", value, sizeof value, kSystemFile);
  return value;
}

// Without a value the key goes.
bool SetSystemValue(const char* section, const char* key, const std::string& value) {
  return ::WritePrivateProfileStringA(section, key, value.empty() ? nullptr : value.c_str(), kSystemFile) !=
         FALSE;
}

// The driver beside this program, as system.ini names it: what follows a blank is taken for parameters.
std::string DriverPath() {
  char path[MAX_PATH] = "";
  ::GetModuleFileNameA(nullptr, path, MAX_PATH);
  std::string driver = path;
  driver.replace(driver.rfind('\\') + 1, std::string::npos, "qvcd.dll");
  if (driver.find(' ') == std::string::npos) return driver;
  char shorter[MAX_PATH] = "";
  const DWORD length = ::GetShortPathNameA(driver.c_str(), shorter, MAX_PATH);
  return length > 0 && length < MAX_PATH ? shorter : driver;
}

bool IsQuorvexDriver(const std::string& path) {
  constexpr std::string_view kFile = "qvcd.dll";
  return path.size() >= kFile.size() &&
         ::lstrcmpiA(path.c_str() + path.size() - kFile.size(), kFile.data()) == 0;
}

int Install() {
  for (const char* section : kMciSections) {
    const std::string before = SystemValue(section, kDeviceType);
    const bool noted = IsQuorvexDriver(before) || SetSystemValue(kNotes, section, before);
    if (!noted || !SetSystemValue(section, kDeviceType, DriverPath()))
      return Complain("system.ini cannot be written");
  }
  return 0;
}

// What is not this folder's driver any more is left alone.
int Uninstall() {
  for (const char* section : kMciSections) {
    if (::lstrcmpiA(SystemValue(section, kDeviceType).c_str(), DriverPath().c_str()) != 0) continue;
    if (!SetSystemValue(section, kDeviceType, SystemValue(kNotes, section)) ||
        !SetSystemValue(kNotes, section, ""))
      return Complain("system.ini cannot be written");
  }
  return 0;
}

// The numbers of the drive that a test may set.
struct TestKnob {
  std::string_view command;
  std::uint32_t DriveState::*field;
};
constexpr TestKnob kTestKnobs[] = {
    {"fail-open", &DriveState::failOpens},        {"claim-tracks", &DriveState::claimTracks},
    {"fail-play", &DriveState::failNextPlay},     {"not-ready", &DriveState::notReadyPolls},
    {"unreadable", &DriveState::unreadableTrack}, {"answer-in", &DriveState::answerMs},
};

// Does what a test asks of the drive; false when it asks something else.
bool RunForTest(SharedDrive& drive, std::string_view command, std::uint32_t number) {
  const SharedDrive::Turn state(drive);
  if (command == "speed" && number > 0) {
    state->SetSpeed(number, DriveClock());
    return true;
  }
  const auto knob = std::find_if(std::begin(kTestKnobs), std::end(kTestKnobs),
                                 [&](const TestKnob& candidate) { return candidate.command == command; });
  if (knob == std::end(kTestKnobs)) return false;
  (*state).*(knob->field) = number;
  return true;
}

int ShowUsage() {
  std::fputs(kUsage, stderr);
  std::fputs(kCardUsage, stderr);
  return 2;
}

int Run(std::span<char*> arguments) {
  const std::string command = arguments.empty() ? "" : arguments[0];
  const std::string argument = arguments.size() > 1 ? arguments[1] : "";
  if (command == "install") return Install();
  if (command == "uninstall") return Uninstall();
  if (command == "card") {
    const int result = RunCardCommand(std::vector<std::string>(arguments.begin() + 1, arguments.end()));
    return result == 2 ? ShowUsage() : result;
  }
  SharedDrive drive;
  if (!drive.IsAvailable()) return Complain("the drive's state cannot be opened");
  if (command == "status") return PrintStatus(drive);
  if (command == "insert" && arguments.size() == 2) return Insert(drive, argument);
  if (command == "eject") return SharedDrive::Turn(drive)->Eject(), 0;
  if (command == "close") return SharedDrive::Turn(drive)->CloseTray(), 0;
  const bool defaultCode = command == "fail-play" && argument.empty();
  const std::optional<std::uint32_t> number =
      defaultCode ? std::optional<std::uint32_t>(MCIERR_HARDWARE) : Number(argument);
  if (number && RunForTest(drive, command, *number)) return 0;
  return ShowUsage();
}

}  // namespace
}  // namespace quorvex

int main(int count, char** arguments) {
  return quorvex::Run(std::span(arguments, static_cast<std::size_t>(count)).subspan(1));
}
