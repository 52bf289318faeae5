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

  // Another place is reached; events tell how it differs from the last one.
  void Show(const std::shared_ptr<const Place>& place);

  // The same place with another button selected, or other streams.
  void Change(const Place& changed) { Show(std::make_shared<const Place>(changed)); }

  // Nothing is played any more.
  void Stop(DVD_PB_STOPPED reason);

 private:
  void TellDifferences(const Place& before, const Place& now);
  void TellStreams(const Place& before, const Place& now);

  DiscEvents& events;
  std::mutex mutex;  // guards what follows
  std::shared_ptr<const Place> shown = std::make_shared<const Place>();
};

}  // namespace quorvex
