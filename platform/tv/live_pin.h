// An output pin of a live source: while its filter runs, a thread of its own makes a sample for
// every frame's time; pictures whose time has gone by are lost, and counted.
#pragma once

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

#include "platform/common/output_pin.h"
#include "platform/common/pin_category.h"
#include "platform/tv/frame_pacer.h"

namespace quorvex {

// What the pins know of the device they belong to.
class LiveDevice {
 public:
  // Whether it is still there; the first that finds it gone tells the graph.
  virtual bool IsThere() = 0;
  // Milliseconds that making a sample takes longer, for tests.
  virtual std::uint32_t Slowness() = 0;

 protected:
  ~LiveDevice() = default;
};

class LivePin : public OutputPin {
 public:
  LivePin(FilterBase& owner, LiveDevice& itsDevice, std::wstring id, const GUID& category)
      : OutputPin(owner, std::move(id)), device(itsDevice), pinCategory(*this, category) {}

  // With the filter's state: from stopped and to stopped.
  HRESULT Begin();
  void End();

 protected:
  // Its thread calls what deriving classes have: they call End when they go.
  ~LivePin() = default;
  void* Find(REFIID iid) override;

  // How long a frame lasts at present.
  virtual MediaTime FrameTime() = 0;
  // Whether a frame whose time has gone by is lost; else it is sent late.
  virtual bool MayLose() { return true; }
  // Called on the pin's thread: what begins anew, and one frame.
  virtual void OnBegin() {}
  virtual void Send(const FramePacer::Frame& frame) = 0;

  // The time of day at a time of the stream.
  MediaTime AirTimeOf(MediaTime streamTime);

 private:
  void Work();
  bool WaitUntil(MediaTime due, MediaTime& now);
  void Idle(std::chrono::microseconds time);

  LiveDevice& device;
  PinCategory pinCategory;
  std::thread thread;
  std::mutex waitLock;
  std::condition_variable waiting;
  bool ending = false;  // guarded by waitLock
};

}  // namespace quorvex
