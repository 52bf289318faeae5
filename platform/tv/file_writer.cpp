#include "platform/tv/file_writer.h"

#include <evcode.h>
#include <vfwmsgs.h>

#include <cstring>

#include "platform/common/answer.h"
#include "platform/common/media_time.h"

namespace quorvex {

HRESULT WrittenFile::SetPath(const std::wstring& wanted) {
  const bool isNew = ::GetFileAttributesW(wanted.c_str()) == INVALID_FILE_ATTRIBUTES;
  CaptureFile trial;
  const HRESULT result = trial.Open(wanted, CaptureFile::Mode::kRecord);
  if (FAILED(result)) return result;
  trial.Close();
  if (isNew) ::DeleteFileW(wanted.c_str());
  const std::scoped_lock guard(lock);
  file.Close();
  path = wanted;
  return S_OK;
}

std::wstring WrittenFile::Path() {
  const std::scoped_lock guard(lock);
  return path;
}

void WrittenFile::SetOverwrite(bool wanted) {
  const std::scoped_lock guard(lock);
  overwrite = wanted;
}

bool WrittenFile::Overwrites() {
  const std::scoped_lock guard(lock);
  return overwrite;
}

HRESULT WrittenFile::Open() {
  if (file.IsOpen()) return S_OK;
  return file.Open(path, overwrite ? CaptureFile::Mode::kOverwrite : CaptureFile::Mode::kRecord);
}

HRESULT WrittenFile::Start() {
  const std::scoped_lock guard(lock);
  const HRESULT result = Open();
  running = SUCCEEDED(result);
  return result;
}

void WrittenFile::Stop() {
  const std::scoped_lock guard(lock);
  running = false;
  if (!writing) file.Close();
}

void WrittenFile::Done() {
  const std::scoped_lock guard(lock);
  writing = false;
  if (!running) file.Close();
}

HRESULT WrittenFile::Flush() {
  std::unique_lock guard(lock);
  if (!file.IsOpen()) return S_OK;
  CaptureFile shared = file.Shared();
  guard.unlock();
  return shared.Flush();
}

HRESULT WrittenFile::Write(std::uint64_t place, ByteView bytes, std::size_t& written) {
  const std::scoped_lock guard(lock);
  written = 0;
  if (const HRESULT result = Open(); FAILED(result)) return result;
  writing = true;
  return file.Write(place, bytes, written) == FileResult::kDone ? S_OK : file.Error();
}

HRESULT WrittenFile::Resize(std::uint64_t bytes) {
  const std::scoped_lock guard(lock);
  if (const HRESULT result = Open(); FAILED(result)) return result;
  writing = true;
  return file.Resize(bytes) == FileResult::kDone ? S_OK : file.Error();
}

std::size_t WrittenFile::Read(std::uint64_t place, std::span<std::uint8_t> into) {
  const std::scoped_lock guard(lock);
  if (file.IsOpen()) return file.Read(place, into);
  CaptureFile looked;  // which must not begin the file anew
  return SUCCEEDED(looked.Open(path, CaptureFile::Mode::kRead)) ? looked.Read(place, into) : 0;
}

std::uint64_t WrittenFile::Size() {
  const std::scoped_lock guard(lock);
  if (file.IsOpen()) return file.Size();
  CaptureFile looked;
  return SUCCEEDED(looked.Open(path, CaptureFile::Mode::kRead)) ? looked.Size() : 0;
}

HRESULT WriterStream::Read(void* target, ULONG bytes, ULONG* read) {
  if (target == nullptr) return STG_E_INVALIDPOINTER;
  const std::size_t count = file.Read(place, {static_cast<std::uint8_t*>(target), bytes});
  place += count;
  if (read != nullptr) *read = static_cast<ULONG>(count);
  return count == bytes ? S_OK : S_FALSE;
}

HRESULT WriterStream::Write(const void* source, ULONG bytes, ULONG* written) {
  if (source == nullptr) return STG_E_INVALIDPOINTER;
  std::size_t count = 0;
  const HRESULT result = file.Write(place, {static_cast<const std::uint8_t*>(source), bytes}, count);
  place += count;
  if (written != nullptr) *written = static_cast<ULONG>(count);
  return result == kDiskFull ? STG_E_MEDIUMFULL : result;
}

HRESULT WriterStream::Seek(LARGE_INTEGER way, DWORD origin, ULARGE_INTEGER* reached) {
  if (origin > STREAM_SEEK_END) return STG_E_INVALIDFUNCTION;
  const std::uint64_t from = origin == STREAM_SEEK_SET ? 0 : origin == STREAM_SEEK_CUR ? place : file.Size();
  const auto wanted = static_cast<LONGLONG>(from) + way.QuadPart;
  if (wanted < 0) return STG_E_INVALIDFUNCTION;
  place = static_cast<std::uint64_t>(wanted);
  if (reached != nullptr) reached->QuadPart = place;
  return S_OK;
}

HRESULT WriterStream::SetSize(ULARGE_INTEGER size) {
  const HRESULT result = file.Resize(size.QuadPart);
  return result == kDiskFull ? STG_E_MEDIUMFULL : result;
}

HRESULT WriterStream::Commit(DWORD flags) {
  if ((flags & STGC_DANGEROUSLYCOMMITMERELYTODISKCACHE) == 0) return file.Flush();
  file.Done();
  return S_OK;
}

HRESULT WriterStream::Stat(STATSTG* stat, DWORD) {
  if (stat == nullptr) return STG_E_INVALIDPOINTER;
  *stat = {};
  stat->type = STGTY_STREAM;
  stat->cbSize.QuadPart = file.Size();
  return S_OK;
}

WriterPin::WriterPin(FilterBase& owner, WrittenFile& written)
    : InputPin(owner, L"In"), file(written), stream(*static_cast<IPin*>(this), written) {}

void* WriterPin::Find(REFIID iid) {
  if (iid == IID_IStream || iid == IID_ISequentialStream) return static_cast<IStream*>(&stream);
  return InputPin::Find(iid);
}

HRESULT WriterPin::OnSample(IMediaSample& sample) {
  REFERENCE_TIME begin = 0;
  REFERENCE_TIME end = 0;
  BYTE* data = nullptr;
  HRESULT result = sample.GetTime(&begin, &end);
  if (SUCCEEDED(result)) result = sample.GetPointer(&data);
  if (FAILED(result) || begin < 0) return FAILED(result) ? result : E_INVALIDARG;
  std::size_t written = 0;
  const auto bytes = static_cast<std::size_t>(sample.GetActualDataLength());
  result = file.Write(static_cast<std::uint64_t>(begin), {data, bytes}, written);
  if (FAILED(result)) filter.Tell(EC_ERRORABORT, result, 0);
  return result;
}

void WriterPin::OnEnd() {
  filter.Tell(EC_COMPLETE, S_OK, reinterpret_cast<LONG_PTR>(static_cast<IBaseFilter*>(&filter)));
}

HRESULT FileSink::SetFileName(LPCOLESTR name, const AM_MEDIA_TYPE*) {
  if (name == nullptr) return E_POINTER;
  return filter.State() == State_Stopped ? file.SetPath(name) : VFW_E_NOT_STOPPED;
}

HRESULT FileSink::GetCurFile(LPOLESTR* name, AM_MEDIA_TYPE* type) {
  if (name == nullptr) return E_POINTER;
  const std::wstring path = file.Path();
  const std::size_t bytes = (path.size() + 1) * sizeof(wchar_t);
  *name = static_cast<LPOLESTR>(::CoTaskMemAlloc(bytes));
  if (*name == nullptr) return E_OUTOFMEMORY;
  std::memcpy(*name, path.c_str(), bytes);
  if (type != nullptr) {
    *type = {};
    type->majortype = MEDIATYPE_Stream;
    type->subtype = MEDIASUBTYPE_Avi;
  }
  return S_OK;
}

HRESULT FileSink::SetMode(DWORD flags) {
  if (flags > AM_FILE_OVERWRITE) return E_INVALIDARG;
  file.SetOverwrite(flags == AM_FILE_OVERWRITE);
  return S_OK;
}

HRESULT FileSink::GetMode(DWORD* flags) { return Answer(flags, file.Overwrites() ? AM_FILE_OVERWRITE : 0); }

void* FileWriter::Find(REFIID iid) {
  if (iid == __uuidof(IFileSinkFilter) || iid == __uuidof(IFileSinkFilter2))
    return static_cast<IFileSinkFilter2*>(&sink);
  if (iid == IID_IAMFilterMiscFlags) return static_cast<IAMFilterMiscFlags*>(this);
  return FilterBase::Find(iid);
}

}  // namespace quorvex
