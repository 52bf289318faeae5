// What a multiplexer does while its graph runs: a thread of its own takes the samples that have come and
// records them, so that a disk that takes its time holds up no source.
#pragma once

#include <windows.h>

#include <strmif.h>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

#include "base/com_ptr.h"
#include "platform/avi/avi_recorder.h"
#include "platform/tv/dropped_frames.h"
#include "platform/tv/journal_keeper.h"

namespace quorvex {

// Who is told what becomes of a recording. Called on the recording's thread.
class RecordingUser {
 public:
  // It ended before its time; what was recorded until then is a whole movie if that could be.
  virtual void OnBroken(HRESULT why) = 0;
  // Every stream has ended, and the movie is finished.
  virtual void OnEnded() = 0;

 protected:
  ~RecordingUser() = default;
};

// Bytes that go through a stream of the file's owner.
class StreamTarget final : public ByteTarget {
 public:
  explicit StreamTarget(ComPtr<IStream> used) : stream(std::move(used)) {}

  FileResult Write(std::uint64_t place, ByteView bytes, std::size_t& written) override;
  FileResult Resize(std::uint64_t bytes) override;
  // What was written is on the disk afterwards, as far as its owner can do that; on any thread.
  [[nodiscard]] HRESULT Flush() const {
    const HRESULT result = stream->Commit(STGC_DEFAULT);
    return result == E_NOTIMPL ? S_OK : result;
  }
  // The file is not needed any more.
  void Done() const { stream->Commit(STGC_DANGEROUSLYCOMMITMERELYTODISKCACHE); }
  [[nodiscard]] HRESULT Error() const { return error; }

 private:
  FileResult Note(HRESULT result);

  ComPtr<IStream> stream;
  std::uint64_t at = ~0ULL;  // where the stream stands
  HRESULT error = S_OK;
};

struct RecordingPlan {
  AviMovie movie;
  int master = AviRecorder::kNoMaster;
  std::vector<std::optional<std::uint8_t>> silence;  // for each stream
  std::wstring journal;                              // its path; empty for none
};

class RecordingThread {
 public:
  RecordingThread(ComPtr<IStream> file, RecordingPlan itsPlan, DroppedFrames& itsCounts, RecordingUser& told);
  RecordingThread(const RecordingThread&) = delete;
  RecordingThread& operator=(const RecordingThread&) = delete;
  ~RecordingThread() { Finish(); }

  // Nothing is written before the first sample.
  void Begin();
  // S_FALSE when nothing more is wanted. The sample is held until it is recorded.
  HRESULT Take(std::size_t stream, IMediaSample& sample);
  void EndOfStream();
  // Records what is still waiting, and ends the movie.
  void Finish();

  [[nodiscard]] MediaTime Length() const { return length; }

 private:
  struct Waiting {
    std::size_t stream = 0;
    ComPtr<IMediaSample> sample;  // none: the stream ends
  };

  void Work();
  bool Next(Waiting& next);
  bool EnsureBegun();
  void Record(const Waiting& next);
  void NoteWhenDue();
  HRESULT FinishFile();
  void End(bool broken);
  void Break(HRESULT why);

  RecordingPlan plan;
  StreamTarget target;
  AviRecorder recorder;
  bool begun = false;  // the header is in the file
  JournalKeeper journal;
  ULONGLONG lastNote = 0;  // by the system's clock
  MediaTime notedLength = 0;
  std::uint64_t notedEnd = 0;
  DroppedFrames& counts;
  RecordingUser& user;
  std::atomic<MediaTime> length{0};
  std::size_t streamsLeft;
  std::thread thread;
  std::mutex lock;  // guards what follows
  std::condition_variable changed;
  std::deque<Waiting> queue;
  bool ending = false;
  bool over = false;
};

}  // namespace quorvex
