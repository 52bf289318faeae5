// Where the disc is for those who watch it: the place whose pictures are shown now. Tells the filter graph of
// every change.
#pragma once

#include <windows.h>

#include <dvdevcod.h>

#include <memory>
#include <mutex>

#include "platform/dvd/place.h"

namespace quorvex {

// Where events go.
class DiscEvents {
 public:
  virtual void Tell(long code, LONG_PTR first, LONG_PTR second) = 0;

 protected:
  ~DiscEvents() = default;
};

class PlaceBoard {
 public:
  explicit PlaceBoard(DiscEvents& told) : events(told) {}

  [[nodiscard]] std::shared_ptr<const Place> Shown() {
    const std::scoped_lock lock(mutex);
    return shown;
  }

  // Another place is reached; events tell how it differs from the last one. What the user has chosen since it
  // was read holds for it.
  void Show(std::shared_ptr<const Place> place);

  // The user's wish changed what the machine says: button, streams and registers are as they are there.
  void Choose(const Place& machine);

  // Nothing is played any more.
  void Stop(DVD_PB_STOPPED reason);

 private:
  void Replace(const std::shared_ptr<const Place>& place);
  void TellDifferences(const Place& before, const Place& now);
  void TellStreams(const Place& before, const Place& now);

  DiscEvents& events;
  // One change at a time, with its events: pictures and wishes are different threads'.
  std::mutex changing;
  Place chosen;      // as it was after the last wish
  std::mutex mutex;  // guards what follows
  std::shared_ptr<const Place> shown = std::make_shared<const Place>();
};

}  // namespace quorvex
