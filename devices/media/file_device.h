// Plays media files, one at a time, from a play list: whatever the platform's filter graph can render. Every
// file has a graph of its own.
#pragma once

#include <cstdint>
#include <string>

#include "devices/graph_device.h"

namespace quorvex {

class CFileDevice final : public CGraphDevice {
 public:
  CFileDevice();
  ~CFileDevice() override;

  bool Open() override;
  bool QueryControls() override;
  bool Activate() override;
  bool LoadMedia() override;

  bool Play(int item, int reserved) override;
  bool NextItem() override;
  bool PreviousItem() override;
  bool FastForward() override;
  bool Rewind() override;
  bool EndScan() override;

  void OnGraphEvent() override;
  void OnTick() override;

  bool BuildPlayOrder() override;
  bool OnRandomChanged() override;
  bool Close() override;

 private:
  // These answer false when the file cannot be played: this object is then gone, with the video window, and
  // no device is current.
  bool OpenCurrentEntry();
  bool PlayCurrentEntry();
  bool ReopenGraph();
  bool HandleComplete();

  bool ReadDuration(OpeningSteps& steps);
  void SeekTo(std::int64_t position);
  void ScanBy(std::int64_t step);
  [[nodiscard]] int IndexOfEntryOrZero(int entry) const;

  std::string playlist;  // the list that was opened, whatever is marked in the dialog since
  std::string filePath;
  std::int64_t scanPosition = 0;  // this and the next in units of 100 ns
  std::int64_t duration = 0;
  bool autoPlay = true;
  bool scanOption = false;   // the file shows a picture: it follows a scan at once
  bool endedInScan = false;  // the file came to its end during the scan, and has not been moved since
};

}  // namespace quorvex
