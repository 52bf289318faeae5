// Where a disc is, as one look at its virtual machine shows it.
#pragma once

#include <dvdread/nav_types.h>

#include <array>
#include <cstdint>

#include "platform/dvd/dvd_time.h"

namespace quorvex {

// The numbers are those that applications are told.
enum class DiscDomain : std::uint8_t {
  kFirstPlay = 1,
  kManagerMenu = 2,
  kTitleSetMenu = 3,
  kTitle = 4,
  kStopped = 5
};

struct Place {
  DiscDomain domain = DiscDomain::kStopped;
  int titleSet = 0;  // whose streams play; 0: the manager's
  int chain = 0;     // the programme chain, its cell and the sector in it, for coming back
  int cell = 0;
  int block = 0;
  int title = 0;  // 0 outside of titles
  int chapter = 0;
  DvdTicks time = 0;    // in the title
  DvdTicks length = 0;  // of the title
  FrameCount frameCount = FrameCount::k30;
  std::uint32_t prohibited = 0;  // user operations that the disc forbids here, UOP_FLAG_*
  int angle = 1;
  int angles = 1;
  int audio = -1;       // stream number as applications count; none: -1
  int subpicture = -1;  // the same
  bool subpictureShown = false;
  std::array<std::uint16_t, 24> systemRegisters{};
  std::array<std::uint16_t, 16> generalRegisters{};
  int wishes = 0;   // how many of the user's wishes were done before
  pci_t control{};  // buttons and times of what begins here

  [[nodiscard]] bool IsMenu() const {
    return domain == DiscDomain::kManagerMenu || domain == DiscDomain::kTitleSetMenu;
  }
  [[nodiscard]] int Buttons() const { return control.hli.hl_gi.hli_ss != 0 ? control.hli.hl_gi.btn_ns : 0; }
  [[nodiscard]] int SelectedButton() const { return systemRegisters[8] >> 10; }
};

}  // namespace quorvex
