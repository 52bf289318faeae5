// The filter that writes a capture file: a multiplexer upstream puts bytes at places, through the input pin's
// IStream or as samples whose times are places. What is in the file stays where nothing is written.
#pragma once

#include <windows.h>

#include <strmif.h>
#include <uuids.h>

#include <mutex>
#include <string>

#include "platform/common/filter_base.h"
#include "platform/common/filter_part.h"
#include "platform/common/input_pin.h"
#include "platform/tv/capture_file.h"

namespace quorvex {

inline constexpr CLSID kFileWriterClass = {
    0x5c0a1f30, 0x7e54, 0x4a2b, {0x9f, 0x61, 0x2d, 0x8e, 0x47, 0xb3, 0x10, 0x09}};

// The file that is written. It is opened when it is needed first, and closed when the graph has stopped and
// who writes says that it is done: that may come in either order.
class WrittenFile {
 public:
  // Checks that the file can be written, as far as this can be told beforehand.
  HRESULT SetPath(const std::wstring& wanted);
  std::wstring Path();
  void SetOverwrite(bool wanted);
  bool Overwrites();

  HRESULT Start();
  void Stop();
  void Done();
  // What was written is on the disk afterwards; others may write meanwhile.
  HRESULT Flush();
  HRESULT Write(std::uint64_t place, ByteView bytes, std::size_t& written);
  HRESULT Resize(std::uint64_t bytes);
  std::size_t Read(std::uint64_t place, std::span<std::uint8_t> into);
  std::uint64_t Size();

 private:
  HRESULT Open();

  std::mutex lock;  // guards what follows
  std::wstring path;
  CaptureFile file;
  bool overwrite = false;
  bool running = false;
  bool writing = false;
};

class WriterStream final : public ObjectPart<IStream> {
 public:
  WriterStream(IUnknown& pin, WrittenFile& written) : ObjectPart(pin), file(written) {}

  HRESULT STDMETHODCALLTYPE Read(void* target, ULONG bytes, ULONG* read) override;
  // STG_E_MEDIUMFULL when there is no room for all of it.
  HRESULT STDMETHODCALLTYPE Write(const void* source, ULONG bytes, ULONG* written) override;
  HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER way, DWORD origin, ULARGE_INTEGER* reached) override;
  HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER size) override;
  // STGC_DEFAULT: what was written is on the disk afterwards; on any thread. With
  // STGC_DANGEROUSLYCOMMITMERELYTODISKCACHE nothing more will be written.
  HRESULT STDMETHODCALLTYPE Commit(DWORD flags) override;
  HRESULT STDMETHODCALLTYPE Stat(STATSTG* stat, DWORD flags) override;
  HRESULT STDMETHODCALLTYPE CopyTo(IStream*, ULARGE_INTEGER, ULARGE_INTEGER*, ULARGE_INTEGER*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Revert() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Clone(IStream**) override { return E_NOTIMPL; }

 private:
  WrittenFile& file;
  std::uint64_t place = 0;  // one thread at a time works a stream
};

class WriterPin final : public InputPin {
 public:
  WriterPin(FilterBase& owner, WrittenFile& written);
  ~WriterPin() = default;

 protected:
  void* Find(REFIID iid) override;
  std::vector<MediaType> Types() override { return {}; }
  bool Takes(const AM_MEDIA_TYPE& type) override { return type.majortype == MEDIATYPE_Stream; }
  HRESULT OnSample(IMediaSample& sample) override;
  void OnEnd() override;
  void OnBeginFlush() override {}
  void OnEndFlush() override {}

 private:
  WrittenFile& file;
  WriterStream stream;
};

class FileSink final : public FilterPart<IFileSinkFilter2> {
 public:
  FileSink(FilterBase& owner, WrittenFile& written) : FilterPart(owner), file(written) {}

  // VFW_E_NOT_STOPPED while the graph runs.
  HRESULT STDMETHODCALLTYPE SetFileName(LPCOLESTR name, const AM_MEDIA_TYPE*) override;
  HRESULT STDMETHODCALLTYPE GetCurFile(LPOLESTR* name, AM_MEDIA_TYPE* type) override;
  HRESULT STDMETHODCALLTYPE SetMode(DWORD flags) override;
  HRESULT STDMETHODCALLTYPE GetMode(DWORD* flags) override;

 private:
  WrittenFile& file;
};

class FileWriter final : public FilterBase, public IAMFilterMiscFlags {
 public:
  FileWriter() : FilterBase(kFileWriterClass), pin(*this, file), sink(*this, file) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    return FilterBase::QueryInterface(iid, object);
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return FilterBase::AddRef(); }
  ULONG STDMETHODCALLTYPE Release() override { return FilterBase::Release(); }

  // The graph's end waits for it as for a renderer.
  ULONG STDMETHODCALLTYPE GetMiscFlags() override { return AM_FILTER_MISC_FLAGS_IS_RENDERER; }

 protected:
  ~FileWriter() override = default;
  void* Find(REFIID iid) override;
  std::vector<IPin*> Pins() override { return {&pin}; }
  HRESULT OnStart() override { return file.Start(); }
  void OnStop() override { file.Stop(); }

 private:
  WrittenFile file;
  WriterPin pin;
  FileSink sink;
};

}  // namespace quorvex
