#include "platform/dvd/machine_state.h"

#include <algorithm>
#include <cstring>
#include <mutex>
#include <optional>

// The library's own headers: under Windows they bring a mutex of their own under the name of the system's.
#define pthread_mutex_t dvdnav_mutex_t  // NOLINT(bugprone-reserved-identifier,readability-identifier-naming)
extern "C" {
#include <dvdnav/dvdnav.h>
#include <dvdread/ifo_read.h>
// The order counts.
#include <dvdnav/internal/vm/decoder.h>
#include <dvdnav/internal/vm/vm.h>

#include <dvdnav/internal/dvdnav_internal.h>

dvdnav_status_t dvdnav_jump_to_sector_by_time(dvdnav_t* machine, std::uint64_t ticks, std::int32_t mode);
}

namespace quorvex {
namespace {

constexpr int kAudioStreams = 8;
constexpr int kSubpictureStreams = 32;

class MachineLock {
 public:
  explicit MachineLock(dvdnav_t* locked) : machine(locked) { pthread_mutex_lock(&machine->vm_lock); }
  MachineLock(const MachineLock&) = delete;
  MachineLock& operator=(const MachineLock&) = delete;
  ~MachineLock() { pthread_mutex_unlock(&machine->vm_lock); }

 private:
  dvdnav_t* machine;
};

DiscDomain DomainOf(const dvd_state_t& state) {
  switch (state.domain) {
    case DVD_DOMAIN_VMGM: return DiscDomain::kManagerMenu;
    case DVD_DOMAIN_VTSMenu: return DiscDomain::kTitleSetMenu;
    case DVD_DOMAIN_VTSTitle: return DiscDomain::kTitle;
    default: return DiscDomain::kFirstPlay;
  }
}

// The stream that is chosen, or the first one that the programme chain has; none: -1.
template <typename Has>
int ChosenStream(int chosen, int count, Has has) {
  if (chosen < count && has(chosen)) return chosen;
  for (int i = 0; i < count; ++i)
    if (has(i)) return i;
  return -1;
}

void ReadStreams(const dvd_state_t& state, Place& place) {
  const bool inTitle = state.domain == DVD_DOMAIN_VTSTitle;
  const int audio = inTitle ? state.registers.SPRM[1] : 0;
  const int subpicture = inTitle ? state.registers.SPRM[2] : 0;
  place.audio = ChosenStream(audio, kAudioStreams, [&](int i) { return (state.pgc->audio_control[i] >> 15 & 1) != 0; });
  place.subpicture = ChosenStream(subpicture & 0x3F, kSubpictureStreams,
                                  [&](int i) { return (state.pgc->subp_control[i] >> 31) != 0; });
  place.subpictureShown = !inTitle || (subpicture & 0x40) != 0;
}

}  // namespace

dvd_reader_s* ReaderOf(dvdnav_s* machine) { return machine->vm->dvd; }

void ReadMachine(dvdnav_s* machine, Place& place) {
  const MachineLock lock(machine);
  const dvd_state_t& state = machine->vm->state;
  std::copy_n(state.registers.SPRM, place.systemRegisters.size(), place.systemRegisters.begin());
  std::copy_n(state.registers.GPRM, place.generalRegisters.size(), place.generalRegisters.begin());
  place.domain = DomainOf(state);
  const bool ofManager = place.domain == DiscDomain::kManagerMenu || place.domain == DiscDomain::kFirstPlay;
  place.titleSet = ofManager ? 0 : state.vtsN;
  if (state.pgc == nullptr) return;
  const dvd_time_t& length = state.pgc->playback_time;
  const DiscTime total{length.hour, length.minute, length.second, length.frame_u};
  place.length = total.Ticks();
  place.frameCount = total.Count();
  ReadStreams(state, place);
}

bool SetRegister(dvdnav_s* machine, SystemRegister which, int value) {
  const MachineLock lock(machine);
  machine->vm->state.registers.SPRM[static_cast<int>(which)] = static_cast<std::uint16_t>(value);
  return true;
}

bool GoToTime(dvdnav_s* machine, DvdTicks time) {
  constexpr std::int32_t kAtOrBefore = -1;
  if (machine->vm->state.domain != DVD_DOMAIN_VTSTitle || time < 0) return false;
  if (dvdnav_jump_to_sector_by_time(machine, static_cast<std::uint64_t>(time), kAtOrBefore) !=
      DVDNAV_STATUS_OK)
    return false;
  machine->position_current.still = 0;
  return true;
}

bool GoToPreviousUnit(dvdnav_s* machine) {
  const MachineLock lock(machine);
  const dvd_state_t& state = machine->vm->state;
  const std::uint32_t back = machine->dsi.vobu_sri.prev_vobu & SRI_END_OF_CELL;
  if (state.pgc == nullptr || state.domain != DVD_DOMAIN_VTSTitle) return false;
  int cell = state.cellN;
  std::int32_t block = 0;
  if (back != SRI_END_OF_CELL) {
    const auto first = static_cast<std::int32_t>(state.pgc->cell_playback[cell - 1].first_sector);
    block = machine->vobu.vobu_start - static_cast<std::int32_t>(back) - first;
  } else {
    if (--cell < 1) return false;
    const cell_playback_t& before = state.pgc->cell_playback[cell - 1];
    block = static_cast<std::int32_t>(before.last_vobu_start_sector - before.first_sector);
  }
  if (block < 0) return false;
  vm_jump_cell_block(machine->vm, cell, block);
  machine->position_current.still = 0;
  machine->vm->hop_channel += HOP_SEEK;
  return true;
}

bool JumpIsDue(dvdnav_s* machine) {
  const MachineLock lock(machine);
  return machine->vm->hop_channel != machine->position_current.hop_channel;
}

namespace {

const vobu_admap_t* UnitsOf(const vm_t& machine) {
  switch (machine.state.domain) {
    case DVD_DOMAIN_VTSTitle: return machine.vtsi != nullptr ? machine.vtsi->vts_vobu_admap : nullptr;
    case DVD_DOMAIN_VTSMenu: return machine.vtsi != nullptr ? machine.vtsi->menu_vobu_admap : nullptr;
    default: return machine.vmgi != nullptr ? machine.vmgi->menu_vobu_admap : nullptr;
  }
}

// The start of the unit `count` units behind a sector; none beyond the last.
std::optional<std::uint32_t> UnitBehind(const vobu_admap_t& units, std::uint32_t sector, int count) {
  const std::size_t size = (units.last_byte + 1 - VOBU_ADMAP_SIZE) / sizeof(std::uint32_t);
  const std::uint32_t* const begin = units.vobu_start_sectors;
  const std::uint32_t* const end = begin + size;
  const std::uint32_t* found = std::upper_bound(begin, end, sector);
  return end - found >= count ? std::optional(found[count - 1]) : std::nullopt;
}

// The cell that the unit after next lies in, from the one that plays on.
bool JumpToUnit(vm_t& machine, std::uint32_t unit) {
  const pgc_t& chain = *machine.state.pgc;
  for (int cell = machine.state.cellN; cell <= chain.nr_of_cells; ++cell) {
    const cell_playback_t& playback = chain.cell_playback[cell - 1];
    if (unit < playback.first_sector || unit > playback.last_sector) continue;
    vm_jump_cell_block(&machine, cell, static_cast<int>(unit - playback.first_sector));
    return true;
  }
  return false;
}

}  // namespace

bool GoBehind(dvdnav_s* machine, int attempts) {
  const MachineLock lock(machine);
  vm_t& vm = *machine->vm;
  if (vm.state.pgc == nullptr || vm.stopped) return false;
  machine->position_current.still = 0;
  machine->vm->hop_channel += HOP_SEEK;
  const vobu_admap_t* units = UnitsOf(vm);
  const int count = 1 << std::min(attempts - 1, 10);
  if (units != nullptr && vm.state.cellN >= 1) {
    const auto here = static_cast<std::uint32_t>(std::max(machine->vobu.vobu_start, 0));
    const std::optional<std::uint32_t> unit = UnitBehind(*units, here, count);
    if (unit && JumpToUnit(vm, *unit)) return true;
  }
  vm_get_next_cell(&vm);
  return !vm.stopped;
}

bool ResumeTitle(dvdnav_s* machine) {
  {
    const MachineLock lock(machine);
    const dvd_state_t& state = machine->vm->state;
    if (state.domain == DVD_DOMAIN_VTSTitle || state.rsm_vtsN == 0) return false;
  }
  return dvdnav_menu_call(machine, DVD_MENU_Escape) == DVDNAV_STATUS_OK;
}

}  // namespace quorvex
