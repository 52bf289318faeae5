// The real control panel with the CD device and discs of a test's own.
#pragma once

#include <vector>

#include "devices/cd/disc_store.h"
#include "tests/support/panel.h"
#include "tests/support/virtual_drive.h"

namespace quorvex {

class CdPanelTest : public PanelTest {
 protected:
  ~CdPanelTest() override { currentDevice.reset(); }

  static int First() { return Number(kFirstNumber); }
  static int Second() { return Number(kSecondNumber); }
  static PlayState State() { return currentDevice->playState; }
  static bool Until(const std::function<bool()>& done) { return PumpUntil(done, 8000); }

  // The CD device with a disc that is playing its first entry (or lies still without AutoPlay).
  void OpenWith(const std::vector<int>& seconds, const std::string& config = "") {
    stores.Write("quorvex.ini", "[CD]\r\n" + config);
    drive.Insert(seconds);
    Press(kCommandCd);
    ASSERT_TRUE(Until([&] { return Second() == static_cast<int>(seconds.size()); }));
    const bool plays = config.find("AutoPlay=0") == std::string::npos;
    ASSERT_TRUE(Until([&] { return State() == (plays ? PlayState::kPlaying : PlayState::kStopped); }));
  }

  void StorePlaylist(const std::vector<int>& seconds, const std::string& playlist) const {
    stores.Write("cd.abm", "[" + DiscIdentifier(seconds) + "]\r\nPlaylist=" + playlist + "\r\n");
  }

  VirtualDrive drive;
};

}  // namespace quorvex
