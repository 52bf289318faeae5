#include "platform/dvd/machine_state.h"

#include <algorithm>
#include <cstring>
#include <mutex>

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

bool ResumeTitle(dvdnav_s* machine) {
  {
    const MachineLock lock(machine);
    const dvd_state_t& state = machine->vm->state;
    if (state.domain == DVD_DOMAIN_VTSTitle || state.rsm_vtsN == 0) return false;
  }
  return dvdnav_menu_call(machine, DVD_MENU_Escape) == DVDNAV_STATUS_OK;
}

}  // namespace quorvex
