#include "platform/tv/recording_thread.h"

#include "platform/common/com_thread.h"

namespace quorvex {
namespace {

// The journal is older than this only by what it takes to bring so much to the disk.
constexpr DWORD kNoteEveryMs = 500;
// What has waited for a slow disk may be recorded much faster than it came.
constexpr MediaTime kNoteEvery = kNoteEveryMs * kMillisecond;

std::optional<SampleTime> TimeOf(IMediaSample& sample) {
  REFERENCE_TIME begin = 0;
  REFERENCE_TIME end = 0;
  const HRESULT result = sample.GetTime(&begin, &end);
  if (FAILED(result)) return std::nullopt;
  return SampleTime{begin, result == S_OK ? end : begin};
}

}  // namespace

FileResult StreamTarget::Note(HRESULT result) {
  if (SUCCEEDED(result)) return FileResult::kDone;
  const bool full = result == STG_E_MEDIUMFULL || result == kDiskFull;
  error = full ? kDiskFull : result;
  at = ~0ULL;
  return full ? FileResult::kFull : FileResult::kFailed;
}

FileResult StreamTarget::Write(std::uint64_t place, ByteView bytes, std::size_t& written) {
  written = 0;
  if (at != place) {
    LARGE_INTEGER to{};
    to.QuadPart = static_cast<LONGLONG>(place);
    if (const HRESULT result = stream->Seek(to, STREAM_SEEK_SET, nullptr); FAILED(result))
      return Note(result);
  }
  ULONG count = 0;
  HRESULT result = stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), &count);
  written = count;
  at = place + count;
  if (SUCCEEDED(result) && count < bytes.size()) result = kDiskFull;
  return Note(result);
}

FileResult StreamTarget::Resize(std::uint64_t bytes) {
  ULARGE_INTEGER size{};
  size.QuadPart = bytes;
  return Note(stream->SetSize(size));
}

RecordingThread::RecordingThread(ComPtr<IStream> file, RecordingPlan itsPlan, DroppedFrames& itsCounts,
                                 RecordingUser& told)
    : plan(std::move(itsPlan)),
      target(std::move(file)),
      recorder(target, plan.movie, plan.master, plan.silence),
      journal([this] { return SUCCEEDED(target.Flush()); }),
      counts(itsCounts),
      user(told),
      streamsLeft(plan.movie.streams.size()) {}

void RecordingThread::Begin() {
  counts.Clear();
  thread = std::thread([this] { Work(); });
}

HRESULT RecordingThread::Take(std::size_t stream, IMediaSample& sample) {
  const std::scoped_lock guard(lock);
  if (over || ending) return S_FALSE;
  queue.push_back({stream, ComPtr<IMediaSample>::Share(&sample)});
  changed.notify_all();
  return S_OK;
}

void RecordingThread::EndOfStream() {
  const std::scoped_lock guard(lock);
  queue.push_back({});
  changed.notify_all();
}

void RecordingThread::Finish() {
  {
    const std::scoped_lock guard(lock);
    ending = true;
    changed.notify_all();
  }
  if (thread.joinable()) thread.join();
}

bool RecordingThread::Next(Waiting& next) {
  std::unique_lock guard(lock);
  changed.wait_for(guard, std::chrono::milliseconds(kNoteEveryMs),
                   [this] { return ending || !queue.empty(); });
  next = {};
  if (queue.empty()) return !ending;
  next = std::move(queue.front());
  queue.pop_front();
  if (!next.sample) --streamsLeft;
  return true;
}

void RecordingThread::Work() {
  const ComThread inCom;
  for (Waiting next; !over && Next(next);) {
    if (next.sample) Record(next);
    NoteWhenDue();
    if (streamsLeft == 0 && !over) {
      End(false);
      user.OnEnded();
    }
  }
  if (!over) End(false);
}

// The file may hold a movie that is not saved yet: it stays until there is something to record.
bool RecordingThread::EnsureBegun() {
  if (begun) return true;
  if (recorder.Begin() != FileResult::kDone) {
    Break(target.Error());
    return false;
  }
  begun = true;
  journal.Begin(plan.journal, recorder.End(), recorder.Movie());
  lastNote = ::GetTickCount64();
  notedEnd = recorder.End();
  return true;
}

void RecordingThread::Record(const Waiting& next) {
  BYTE* data = nullptr;
  if (FAILED(next.sample->GetPointer(&data)) || !EnsureBegun()) return;
  const auto bytes = static_cast<std::size_t>(next.sample->GetActualDataLength());
  const std::int64_t lost = recorder.Lost();
  const std::int64_t pictures = recorder.Pictures();
  const FileResult result = recorder.Take(next.stream, TimeOf(*next.sample.Get()), {data, bytes},
                                          next.sample->IsSyncPoint() == S_OK);
  if (recorder.Lost() > lost) counts.CountLost(pictures + lost, recorder.Lost() - lost);
  if (recorder.Pictures() > pictures) counts.CountDelivered(bytes);
  length = recorder.Length();
  // A movie has an end, too, which is none of the disk.
  const HRESULT failure = FAILED(target.Error()) ? target.Error() : HRESULT_FROM_WIN32(ERROR_FILE_TOO_LARGE);
  if (result != FileResult::kDone) Break(failure);
}

void RecordingThread::NoteWhenDue() {
  const bool isDue =
      ::GetTickCount64() - lastNote >= kNoteEveryMs || recorder.Length() - notedLength >= kNoteEvery;
  if (!begun || over || !isDue || recorder.End() == notedEnd) return;
  journal.Note(recorder.End(), recorder.Movie());
  lastNote = ::GetTickCount64();
  notedEnd = recorder.End();
  notedLength = recorder.Length();
}

void RecordingThread::Break(HRESULT why) {
  End(true);
  user.OnBroken(why);
}

// Until the movie is on the disk, the journal is needed.
HRESULT RecordingThread::FinishFile() {
  if (!begun) return S_OK;
  return recorder.Finish() == FileResult::kDone ? target.Flush() : target.Error();
}

void RecordingThread::End(bool broken) {
  {
    const std::scoped_lock guard(lock);
    over = true;
    queue.clear();
  }
  const HRESULT result = FinishFile();
  length = recorder.Length();
  journal.End(SUCCEEDED(result));
  target.Done();
  if (FAILED(result) && !broken) user.OnBroken(result);
}

}  // namespace quorvex
