// The cable from the card's sound to the machine's speakers: what is received is heard while the card runs.
#pragma once

#include <windows.h>

#include <atomic>
#include <thread>

#include "platform/common/filter_base.h"
#include "platform/tv/reception.h"

namespace quorvex {

class SoundCable {
 public:
  SoundCable(FilterBase& card, Reception& received) : filter(card), reception(received) {}
  SoundCable(const SoundCable&) = delete;
  SoundCable& operator=(const SoundCable&) = delete;
  ~SoundCable() { End(); }

  // With the filter's state: from stopped and to stopped.
  void Begin();
  void End();

 private:
  void Work();

  FilterBase& filter;
  Reception& reception;
  std::atomic<bool> ending{false};
  std::thread thread;
};

}  // namespace quorvex
