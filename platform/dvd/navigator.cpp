#include "platform/dvd/navigator.h"

#include <dvdnav/dvdnav.h>
#include <dvdread/ifo_read.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

#include "platform/dvd/library_guard.h"
#include "platform/dvd/machine_state.h"

namespace quorvex {
namespace {

constexpr std::size_t kMostTableBytes = std::size_t{4} << 20;

// The library's messages are for its developers.
void OnLog(void*, dvdnav_logger_level_t, const char*, va_list) {}

dvdnav_t* OpenMachine(const std::string& path) {
  static const dvdnav_logger_cb logger{OnLog};
  dvdnav_t* opened = nullptr;
  return dvdnav_open2(&opened, nullptr, &logger, path.c_str()) == DVDNAV_STATUS_OK ? opened : nullptr;
}

std::vector<std::uint8_t> ReadWhole(dvd_reader_t* reader, dvd_read_domain_t domain) {
  std::vector<std::uint8_t> bytes;
  dvd_file_t* file = DVDOpenFile(reader, 0, domain);
  if (file == nullptr) return bytes;
  const auto blocks = static_cast<std::size_t>(std::max<ssize_t>(DVDFileSize(file), 0));
  bytes.resize(std::min(blocks * kDvdSectorBytes, kMostTableBytes));
  const ssize_t read = DVDReadBytes(file, bytes.data(), bytes.size());
  bytes.resize(static_cast<std::size_t>(std::max<ssize_t>(read, 0)));
  DVDCloseFile(file);
  return bytes;
}

// Operation n as bit n: the library's structure begins with the highest one.
std::uint32_t OperationBits(const user_ops_t& operations) {
  std::uint32_t left = 0;
  static_assert(sizeof left == sizeof operations);
  std::memcpy(&left, &operations, sizeof left);
  std::uint32_t bits = 0;
  for (int i = 0; i < 32; ++i, left >>= 1) bits = bits << 1 | (left & 1);
  return bits;
}

}  // namespace

// A library call on the open machine; what it answers, and false when an assertion ended it: the machine is
// then left alone for good.
template <typename Call>
bool Navigator::Ask(Call call) {
  if (machine == nullptr) return false;
  bool answer = false;
  bool sound = false;
  const bool done = Guarded([&] {
    answer = call(machine);
    sound = IsSound(machine);
  });
  if (done && sound) return answer;
  dvdnav_t* const left = std::exchange(machine, nullptr);
  Guarded([=] { done ? static_cast<void>(dvdnav_close(left)) : Abandon(left); });
  return false;
}

bool Navigator::Open() {
  Close();
  if (!Guarded([this] { machine = OpenMachine(path); })) machine = nullptr;
  block.resize(kDvdSectorBytes);
  return Ask([](dvdnav_t* opened) {
    dvdnav_set_PGC_positioning_flag(opened, 1);
    dvdnav_set_readahead_flag(opened, 0);
    return true;
  });
}

void Navigator::Close() {
  dvdnav_t* const closed = std::exchange(machine, nullptr);
  if (closed != nullptr) Guarded([=] { dvdnav_close(closed); });
}

std::vector<std::uint8_t> Navigator::ReadManagerTables() {
  std::vector<std::uint8_t> bytes;
  Ask([&](dvdnav_t* opened) {
    dvd_reader_t* reader = ReaderOf(opened);
    if (ifoReadsBackup(reader, 0) == 0) bytes = ReadWhole(reader, DVD_READ_INFO_FILE);
    if (bytes.empty()) bytes = ReadWhole(reader, DVD_READ_INFO_BACKUP_FILE);
    return true;
  });
  return bytes;
}

bool Navigator::ComesToPlay() {
  constexpr int kMostSteps = 1000;
  constexpr int kMostAttempts = 40;
  int attempts = 0;
  for (int i = 0; i < kMostSteps; ++i) {
    switch (Next().kind) {
      case DiscStep::Kind::kSector:
      case DiscStep::Kind::kPlace:
      case DiscStep::Kind::kStill: return true;
      case DiscStep::Kind::kEnd: return false;
      case DiscStep::Kind::kDrain: EndDrain(); break;
      case DiscStep::Kind::kUnreadable:
        if (++attempts > kMostAttempts || !SkipDamage(attempts)) return false;
        break;
      default: break;
    }
  }
  return false;
}

bool Navigator::IsScrambled(int titleSets) {
  constexpr std::size_t kLooked = 512;
  std::vector<std::uint8_t> sectors(kLooked * kDvdSectorBytes);
  for (int set = 1; set <= titleSets; ++set) {
    ssize_t read = 0;
    Ask([&](dvdnav_t* opened) {
      dvd_file_t* file = DVDOpenFile(ReaderOf(opened), set, DVD_READ_TITLE_VOBS);
      if (file == nullptr) return false;
      read = DVDReadBlocks(file, 0, kLooked, sectors.data());
      DVDCloseFile(file);
      return true;
    });
    for (ssize_t i = 0; i < read; ++i) {
      const auto pieces = SplitPack(
          std::span(sectors).subspan(static_cast<std::size_t>(i) * kDvdSectorBytes, kDvdSectorBytes));
      if (std::any_of(pieces.begin(), pieces.end(), [](const PackPiece& piece) { return piece.scrambled; }))
        return true;
    }
  }
  return false;
}

DiscStep Navigator::Next() {
  DiscStep step;
  std::int32_t event = DVDNAV_NOP;
  std::int32_t length = 0;
  const bool done = Ask([&](dvdnav_t* opened) {
    return dvdnav_get_next_block(opened, block.data(), &event, &length) == DVDNAV_STATUS_OK;
  });
  if (!done) {
    step.kind = DiscStep::Kind::kUnreadable;
    return step;
  }
  switch (event) {
    case DVDNAV_BLOCK_OK:
      step.kind = DiscStep::Kind::kSector;
      step.sector = block;
      break;
    case DVDNAV_NAV_PACKET: step.kind = DiscStep::Kind::kPlace; break;
    case DVDNAV_HOP_CHANNEL: step.kind = DiscStep::Kind::kJump; break;
    case DVDNAV_SPU_CLUT_CHANGE:
      step.kind = DiscStep::Kind::kPalette;
      colours.resize(16);
      std::memcpy(colours.data(), block.data(), 16 * sizeof(std::uint32_t));
      step.palette = colours;
      break;
    case DVDNAV_SPU_STREAM_CHANGE:
    case DVDNAV_AUDIO_STREAM_CHANGE: step.kind = DiscStep::Kind::kStreams; break;
    case DVDNAV_HIGHLIGHT: step.kind = DiscStep::Kind::kHighlight; break;
    case DVDNAV_STILL_FRAME: {
      dvdnav_still_event_t still{};
      std::memcpy(&still, block.data(), sizeof still);
      step.kind = DiscStep::Kind::kStill;
      step.seconds = still.length;
      break;
    }
    case DVDNAV_WAIT: step.kind = DiscStep::Kind::kDrain; break;
    case DVDNAV_STOP: step.kind = DiscStep::Kind::kEnd; break;
    default: break;
  }
  return step;
}

Place Navigator::Look() {
  Place place;
  Ask([&](dvdnav_t* opened) {
    ReadMachine(opened, place);
    std::int32_t title = 0;
    std::int32_t chapter = 0;
    if (place.domain == DiscDomain::kTitle &&
        dvdnav_current_title_info(opened, &title, &chapter) == DVDNAV_STATUS_OK) {
      place.title = title;
      place.chapter = chapter;
      place.time = dvdnav_get_current_time(opened);
    }
    place.prohibited = OperationBits(dvdnav_get_restrictions(opened));
    std::int32_t angle = 1;
    std::int32_t angles = 1;
    dvdnav_get_angle_info(opened, &angle, &angles);
    place.angle = angle;
    place.angles = angles;
    place.control = *dvdnav_get_current_nav_pci(opened);
    return true;
  });
  return place;
}

void Navigator::EndStill() {
  Ask([](dvdnav_t* opened) { return dvdnav_still_skip(opened) == DVDNAV_STATUS_OK; });
}

void Navigator::EndDrain() {
  Ask([](dvdnav_t* opened) { return dvdnav_wait_skip(opened) == DVDNAV_STATUS_OK; });
}

int Navigator::AudioStream() {
  int stream = -1;
  Ask([&](dvdnav_t* opened) {
    const std::int8_t active = dvdnav_get_active_audio_stream(opened);
    stream = active < 0 ? -1 : static_cast<unsigned char>(active);
    return true;
  });
  return stream;
}

Navigator::SubpictureStream Navigator::SubpictureToShow() {
  SubpictureStream stream;
  Ask([&](dvdnav_t* opened) {
    const std::int8_t active = dvdnav_get_active_spu_stream(opened);
    stream.number = active == -1 ? -1 : active & 0x1F;
    stream.onlyForced = active < 0 || !ChoosesSubpicture(opened);  // bit 7
    return true;
  });
  return stream;
}

bool Navigator::PlayTitle(int title) {
  return Ask([=](dvdnav_t* opened) {
    return CanOpenTitle(opened, title) && dvdnav_title_play(opened, title) == DVDNAV_STATUS_OK;
  });
}

bool Navigator::PlayChapter(int title, int chapter) {
  return Ask([=](dvdnav_t* opened) {
    return CanOpenTitle(opened, title) && dvdnav_part_play(opened, title, chapter) == DVDNAV_STATUS_OK;
  });
}

bool Navigator::PlayTime(int title, DvdTicks time) {
  return Ask([=](dvdnav_t* opened) { return HasTime(opened, title, time); }) && PlayTitle(title) &&
         SearchTime(time);
}

bool Navigator::SearchTime(DvdTicks time) {
  return Ask([=](dvdnav_t* opened) { return GoToTime(opened, time); });
}

bool Navigator::PreviousProgram() {
  return Ask([](dvdnav_t* opened) { return dvdnav_prev_pg_search(opened) == DVDNAV_STATUS_OK; });
}

bool Navigator::TopProgram() {
  return Ask([](dvdnav_t* opened) { return dvdnav_top_pg_search(opened) == DVDNAV_STATUS_OK; });
}

bool Navigator::NextProgram() {
  return Ask([](dvdnav_t* opened) { return dvdnav_next_pg_search(opened) == DVDNAV_STATUS_OK; });
}

bool Navigator::GoUp() {
  return Ask([](dvdnav_t* opened) { return GoToChainAbove(opened); });
}

bool Navigator::CallMenu(DiscMenu menu, const Place& shown) {
  return Ask([&](dvdnav_t* opened) { return CallMenuFrom(opened, static_cast<int>(menu), shown); });
}

bool Navigator::ReturnTo(const Place& place) {
  return Ask([&](dvdnav_t* opened) { return GoToPlace(opened, place); });
}

bool Navigator::Resume() {
  return Ask([](dvdnav_t* opened) { return ResumeTitle(opened); });
}

bool Navigator::MoveButton(const pci_t& shown, ButtonMove move) {
  pci_t copy = shown;
  return Ask([&](dvdnav_t* opened) {
    switch (move) {
      case ButtonMove::kUp: return dvdnav_upper_button_select(opened, &copy) == DVDNAV_STATUS_OK;
      case ButtonMove::kDown: return dvdnav_lower_button_select(opened, &copy) == DVDNAV_STATUS_OK;
      case ButtonMove::kLeft: return dvdnav_left_button_select(opened, &copy) == DVDNAV_STATUS_OK;
      case ButtonMove::kRight: break;
    }
    return dvdnav_right_button_select(opened, &copy) == DVDNAV_STATUS_OK;
  });
}

bool Navigator::SelectButton(const pci_t& shown, int button) {
  pci_t copy = shown;
  return Ask(
      [&](dvdnav_t* opened) { return dvdnav_button_select(opened, &copy, button) == DVDNAV_STATUS_OK; });
}

bool Navigator::ActivateButton(const pci_t& shown) {
  pci_t copy = shown;
  return Ask([&](dvdnav_t* opened) { return dvdnav_button_activate(opened, &copy) == DVDNAV_STATUS_OK; });
}

void Navigator::SelectAudio(int stream) {
  Ask([=](dvdnav_t* opened) { return SetRegister(opened, SystemRegister::kAudio, stream); });
}

void Navigator::SelectSubpicture(int stream, bool shown) {
  constexpr int kShown = 0x40;
  const int value = stream | (shown ? kShown : 0);
  Ask([=](dvdnav_t* opened) { return SetRegister(opened, SystemRegister::kSubpicture, value); });
}

bool Navigator::SelectAngle(int angle) {
  return Ask([=](dvdnav_t* opened) { return dvdnav_angle_change(opened, angle) == DVDNAV_STATUS_OK; });
}

void Navigator::SetParentalLevel(int level) {
  Ask([=](dvdnav_t* opened) { return SetRegister(opened, SystemRegister::kParentalLevel, level); });
}

void Navigator::SetCountry(std::uint16_t letters) {
  Ask([=](dvdnav_t* opened) { return SetRegister(opened, SystemRegister::kCountry, letters); });
}

void Navigator::SetMenuLanguage(std::uint16_t letters) {
  Ask([=](dvdnav_t* opened) { return SetRegister(opened, SystemRegister::kMenuLanguage, letters); });
}

bool Navigator::HasJumped() {
  return Ask([](dvdnav_t* opened) { return JumpIsDue(opened); });
}

std::uint32_t Navigator::KeyPictureSectors() {
  std::uint32_t sectors = 0;
  Ask([&](dvdnav_t* opened) {
    const dsi_gi_t& unit = dvdnav_get_current_nav_dsi(opened)->dsi_gi;
    sectors = std::min(unit.vobu_1stref_ea, unit.vobu_ea);
    return true;
  });
  return sectors;
}

bool Navigator::SkipDamage(int attempts) {
  return Ask([=](dvdnav_t* opened) { return GoBehind(opened, attempts); });
}

bool Navigator::StepBack() {
  return Ask([](dvdnav_t* opened) { return GoToPreviousUnit(opened); });
}

}  // namespace quorvex
