// The AVI multiplexer: the streams of a capture graph become one AVI file, which the filter at its output
// writes. It has one free input more than are connected.
#pragma once

#include <windows.h>

#include <strmif.h>

#include <memory>

#include "platform/common/filter_base.h"
#include "platform/common/output_pin.h"
#include "platform/tv/dropped_frames.h"
#include "platform/tv/mux_settings.h"
#include "platform/tv/recording_thread.h"

namespace quorvex {

inline constexpr CLSID kAviMuxClass = {
    0x5c0a1f30, 0x7e54, 0x4a2b, {0x9f, 0x61, 0x2d, 0x8e, 0x47, 0xb3, 0x10, 0x08}};

// Beyond the settings it tells of its recording, the one that runs or the last: IAMDroppedFrames the pictures
// in the file and those that were lost, IMediaSeeking::GetCurrentPosition its length.
class AviMux final : public FilterBase, private RecordingUser {
 public:
  AviMux();

  // What an input of this number received; as IMemInputPin::Receive.
  HRESULT Take(std::size_t input, IMediaSample& sample);
  void EndOfStream();
  // An input was connected.
  void AddFreeInput();

 protected:
  ~AviMux() override;
  void* Find(REFIID iid) override;
  std::vector<IPin*> Pins() override;
  HRESULT OnStart() override;
  void OnStop() override;

 private:
  class Input;
  class Output;

  std::optional<RecordingPlan> Plan();
  std::shared_ptr<RecordingThread> Recording();
  MediaTime Length();
  void OnBroken(HRESULT why) override;
  void OnEnded() override;

  MuxSettings settings;
  Interleaving interleaving;
  RecordedPosition position;
  DroppedFrames counts;
  std::unique_ptr<Output> output;
  std::mutex inputsLock;  // guards what follows
  std::vector<std::unique_ptr<Input>> inputs;
  std::vector<std::optional<std::size_t>> streams;  // what the inputs are in the file
  std::mutex recordingLock;                         // guards what follows
  std::shared_ptr<RecordingThread> recording;
  MediaTime lastLength = 0;
};

}  // namespace quorvex
