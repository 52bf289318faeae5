#include "platform/dvd/machine_state.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <mutex>
#include <optional>
#include <span>
#include <utility>

// The library's own headers: under Windows they bring a mutex of their own under the name of the system's.
#ifdef _WIN32
#define pthread_mutex_t dvdnav_mutex_t  // NOLINT(bugprone-reserved-identifier,readability-identifier-naming)
#endif
extern "C" {
#include <dvdnav/dvdnav.h>
#include <dvdread/ifo_read.h>
// The order counts.
#include <dvdnav/internal/vm/decoder.h>
#include <dvdnav/internal/vm/vm.h>

#include <dvdnav/internal/dvdnav_internal.h>
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

int ChosenSubpicture(const dvd_state_t& state) {
  return state.domain == DVD_DOMAIN_VTSTitle ? state.registers.SPRM[2] & 0x3F : 0;
}

bool IsStream(int subpicture) { return subpicture != kNoSubpicture && subpicture != kForcedSubpictures; }

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
  const int subpicture = ChosenSubpicture(state);
  place.audio =
      ChosenStream(audio, kAudioStreams, [&](int i) { return (state.pgc->audio_control[i] >> 15 & 1) != 0; });
  place.subpicture = !IsStream(subpicture) ? -1 : ChosenStream(subpicture, kSubpictureStreams, [&](int i) {
    return (state.pgc->subp_control[i] >> 31) != 0;
  });
  place.subpictureShown = !inTitle || (IsStream(subpicture) && (state.registers.SPRM[2] & 0x40) != 0);
}

// What `look` answers of the tables of a title's set; false when they cannot be read.
template <typename Look>
bool WithTablesOf(vm_t& vm, int title, Look look) {
  if (title < 1 || title > vm.vmgi->tt_srpt->nr_of_srpts) return false;
  if (vm.vtsi != nullptr && vm.state.vtsN == vm.vmgi->tt_srpt->title[title - 1].title_set_nr)
    return look(*vm.vtsi);
  ifo_handle_t* tables = vm_get_title_ifo(&vm, static_cast<std::uint32_t>(title));
  if (tables == nullptr) return false;
  const bool answer = look(*tables);
  vm_ifo_close(tables);
  return answer;
}

}  // namespace

bool IsSound(dvdnav_s* machine) {
  const MachineLock lock(machine);
  const vm_t& vm = *machine->vm;
  const bool inSet = vm.state.domain == DVD_DOMAIN_VTSTitle || vm.state.domain == DVD_DOMAIN_VTSMenu;
  return vm.vmgi != nullptr && vm.vmgi->tt_srpt != nullptr && (!inSet || vm.vtsi != nullptr);
}

void Abandon(dvdnav_s* machine) {
  if (machine->file != nullptr) DVDCloseFile(std::exchange(machine->file, nullptr));
  DVDClose(std::exchange(machine->vm->dvd, nullptr));
}

bool CanOpenTitle(dvdnav_s* machine, int title) {
  const MachineLock lock(machine);
  return WithTablesOf(*machine->vm, title, [](const ifo_handle_t&) { return true; });
}

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
  place.chain = state.pgcN;
  place.cell = state.cellN;
  if (state.cellN >= 1 && state.cellN <= state.pgc->nr_of_cells)
    place.block =
        machine->vobu.vobu_start - static_cast<int>(state.pgc->cell_playback[state.cellN - 1].first_sector);
}

bool SetRegister(dvdnav_s* machine, SystemRegister which, int value) {
  const MachineLock lock(machine);
  machine->vm->state.registers.SPRM[static_cast<int>(which)] = static_cast<std::uint16_t>(value);
  return true;
}

namespace {

const vobu_admap_t* UnitsOf(const vm_t& machine) {
  switch (machine.state.domain) {
    case DVD_DOMAIN_VTSTitle: return machine.vtsi != nullptr ? machine.vtsi->vts_vobu_admap : nullptr;
    case DVD_DOMAIN_VTSMenu: return machine.vtsi != nullptr ? machine.vtsi->menu_vobu_admap : nullptr;
    default: return machine.vmgi != nullptr ? machine.vmgi->menu_vobu_admap : nullptr;
  }
}

std::span<const std::uint32_t> AllUnits(const vobu_admap_t& units) {
  return {units.vobu_start_sectors, (units.last_byte + 1 - VOBU_ADMAP_SIZE) / sizeof(std::uint32_t)};
}

// The start of the unit `count` units behind a sector; none beyond the last.
std::optional<std::uint32_t> UnitBehind(const vobu_admap_t& units, std::uint32_t sector, int count) {
  const std::span<const std::uint32_t> all = AllUnits(units);
  const auto found = std::upper_bound(all.begin(), all.end(), sector);
  return all.end() - found >= count ? std::optional(found[count - 1]) : std::nullopt;
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

// The starts of the units of a cell.
std::span<const std::uint32_t> UnitsOfCell(const vobu_admap_t& units, const cell_playback_t& cell) {
  const std::span<const std::uint32_t> all = AllUnits(units);
  const auto first = std::lower_bound(all.begin(), all.end(), cell.first_sector);
  const auto last = std::upper_bound(first, all.end(), cell.last_sector);
  return {first, last};
}

DvdTicks LengthOf(const cell_playback_t& cell) {
  const dvd_time_t& time = cell.playback_time;
  return DiscTime{time.hour, time.minute, time.second, time.frame_u}.Ticks();
}

// How far into its cell the unit at a sector is, as its first sector says; none when that cannot be read.
std::optional<DvdTicks> ElapsedAt(dvd_file_t* file, std::uint32_t sector) {
  constexpr std::size_t kElapsed = 0x407 + 28;  // behind the second packet's header
  std::array<unsigned char, DVD_VIDEO_LB_LEN> bytes{};
  if (DVDReadBlocks(file, static_cast<int>(sector), 1, bytes.data()) != 1) return std::nullopt;
  return DiscTime{bytes[kElapsed], bytes[kElapsed + 1], bytes[kElapsed + 2], bytes[kElapsed + 3]}.Ticks();
}

// The unit in which a time of the cell lies.
std::uint32_t UnitAt(dvd_file_t* file, std::span<const std::uint32_t> units, DvdTicks time) {
  std::size_t low = 0;
  std::size_t high = units.size();
  while (high - low > 1) {
    const std::size_t middle = low + (high - low) / 2;
    const std::optional<DvdTicks> elapsed = ElapsedAt(file, units[middle]);
    (elapsed && *elapsed <= time ? low : high) = middle;
  }
  return units[low];
}

// The cell in which a time of the title lies, and what is left of the time in it. Of the cells of an angle
// block the first counts.
struct CellTime {
  int cell;
  DvdTicks time;
};
std::optional<CellTime> CellAt(const pgc_t& chain, DvdTicks time) {
  for (int cell = 1; cell <= chain.nr_of_cells; ++cell) {
    const cell_playback_t& playback = chain.cell_playback[cell - 1];
    if (playback.block_type == BLOCK_TYPE_ANGLE_BLOCK && playback.block_mode != BLOCK_MODE_FIRST_CELL)
      continue;
    if (time < LengthOf(playback)) return CellTime{cell, time};
    time -= LengthOf(playback);
  }
  return std::nullopt;
}

// The programme chain that a title of the set (from 1) begins with; null when the tables have none.
const pgc_t* FirstChain(const ifo_handle_t& tables, int title) {
  const vts_ptt_srpt_t* titles = tables.vts_ptt_srpt;
  const pgcit_t* chains = tables.vts_pgcit;
  if (titles == nullptr || chains == nullptr || title < 1 || title > titles->nr_of_srpts) return nullptr;
  const ttu_t& parts = titles->title[title - 1];
  const int number = parts.nr_of_ptts > 0 ? parts.ptt[0].pgcn : 0;
  return number >= 1 && number <= chains->nr_of_pgci_srp ? chains->pgci_srp[number - 1].pgc : nullptr;
}

}  // namespace

bool HasTime(dvdnav_s* machine, int title, DvdTicks time) {
  const MachineLock lock(machine);
  const vm_t& vm = *machine->vm;
  return WithTablesOf(*machine->vm, title, [&](const ifo_handle_t& tables) {
    const pgc_t* chain = FirstChain(tables, vm.vmgi->tt_srpt->title[title - 1].vts_ttn);
    return chain != nullptr && CellAt(*chain, time).has_value();
  });
}

bool GoToTime(dvdnav_s* machine, DvdTicks time) {
  const MachineLock lock(machine);
  vm_t& vm = *machine->vm;
  const vobu_admap_t* units = UnitsOf(vm);
  if (vm.state.domain != DVD_DOMAIN_VTSTitle || vm.state.pgc == nullptr || units == nullptr) return false;
  const std::optional<CellTime> target = CellAt(*vm.state.pgc, time);
  if (!target) return false;
  const cell_playback_t& cell = vm.state.pgc->cell_playback[target->cell - 1];
  const std::span<const std::uint32_t> inCell = UnitsOfCell(*units, cell);
  if (inCell.empty()) return false;
  dvd_file_t* file = DVDOpenFile(vm.dvd, vm.state.vtsN, DVD_READ_TITLE_VOBS);
  if (file == nullptr) return false;
  const std::uint32_t unit = UnitAt(file, inCell, target->time);
  DVDCloseFile(file);
  vm_jump_cell_block(&vm, target->cell, static_cast<int>(unit - cell.first_sector));
  machine->position_current.still = 0;
  vm.hop_channel += HOP_SEEK;
  return true;
}

namespace {

bool IsInChainOf(const dvd_state_t& state, const Place& place) {
  return state.pgc != nullptr && DomainOf(state) == place.domain && state.pgcN == place.chain &&
         (place.titleSet == 0 || state.vtsN == place.titleSet) && place.cell >= 1 &&
         place.cell <= state.pgc->nr_of_cells && place.block >= 0;
}

// Where the machine goes on in its programme chain.
struct Stand {
  int cell;
  int block;
};
void StandAt(dvdnav_s* machine, const Stand& stand) {
  const MachineLock lock(machine);
  machine->vm->state.cellN = stand.cell;
  machine->vm->state.blockN = stand.block;
}

}  // namespace

bool CallMenuFrom(dvdnav_s* machine, int menu, const Place& place) {
  const dvd_state_t& state = machine->vm->state;
  const Stand here{state.cellN, state.blockN};
  if (IsInChainOf(state, place)) StandAt(machine, {place.cell, place.block});
  if (dvdnav_menu_call(machine, static_cast<DVDMenuID_t>(menu)) == DVDNAV_STATUS_OK) return true;
  StandAt(machine, here);
  return false;
}

// The library's own call tells nobody that it has jumped.
bool GoToChainAbove(dvdnav_s* machine) {
  if (dvdnav_go_up(machine) != DVDNAV_STATUS_OK) return false;
  const MachineLock lock(machine);
  ++machine->vm->hop_channel;
  return true;
}

bool GoToPlace(dvdnav_s* machine, const Place& place) {
  const MachineLock lock(machine);
  vm_t& vm = *machine->vm;
  if (!IsInChainOf(vm.state, place)) return false;
  vm_jump_cell_block(&vm, place.cell, place.block);
  machine->position_current.still = 0;
  vm.hop_channel += HOP_SEEK;
  return true;
}

bool ChoosesSubpicture(dvdnav_s* machine) {
  const MachineLock lock(machine);
  return IsStream(ChosenSubpicture(machine->vm->state));
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
  // No seek for the library, which in a title of several angles would leave out the first unit: this one.
  ++machine->vm->hop_channel;
  return true;
}

bool JumpIsDue(dvdnav_s* machine) {
  const MachineLock lock(machine);
  if (machine->vm->hop_channel == machine->position_current.hop_channel) return false;
  // Not every jump of the library ends the still that it leads out of.
  machine->position_current.still = 0;
  machine->skip_still = 0;
  machine->sync_wait = 0;
  return true;
}

bool GoBehind(dvdnav_s* machine, int attempts) {
  const MachineLock lock(machine);
  vm_t& vm = *machine->vm;
  if (vm.state.pgc == nullptr || vm.stopped != 0) return false;
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
  return vm.stopped == 0;
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
