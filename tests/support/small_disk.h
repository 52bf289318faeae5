// A file writer filter of the tests' own, whose disk is full sooner or later.
#pragma once

#include <windows.h>

#include <strmif.h>
#include <uuids.h>

#include <algorithm>
#include <cstring>

#include "platform/avi/byte_order.h"
#include "platform/common/input_pin.h"
#include "platform/common/object_part.h"

namespace quorvex {

// A file writer whose disk is full after so many bytes, as another maker's would be: an input with an
// IStream.
class SmallDisk final : public FilterBase {
 public:
  explicit SmallDisk(std::uint64_t itsRoom)
      : FilterBase(CLSID_NULL), room(itsRoom), pin(*this), stream(pin, *this) {}

  Bytes bytes;
  const std::uint64_t room;
  bool committed = false;

 protected:
  ~SmallDisk() override = default;
  std::vector<IPin*> Pins() override { return {&pin}; }

 private:
  class Stream final : public ObjectPart<IStream> {
   public:
    Stream(IPin& pin, SmallDisk& owner) : ObjectPart(pin), disk(owner) {}
    HRESULT STDMETHODCALLTYPE Write(const void* source, ULONG count, ULONG* written) override {
      *written =
          place >= disk.room ? 0 : static_cast<ULONG>(std::min<std::uint64_t>(count, disk.room - place));
      if (disk.bytes.size() < place + *written) disk.bytes.resize(place + *written);
      std::memcpy(disk.bytes.data() + place, source, *written);
      place += *written;
      return *written == count ? S_OK : STG_E_MEDIUMFULL;
    }
    HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER to, DWORD, ULARGE_INTEGER*) override {
      place = static_cast<std::uint64_t>(to.QuadPart);
      return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER size) override {
      disk.bytes.resize(size.QuadPart);
      return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Commit(DWORD flags) override {
      disk.committed = flags != STGC_DEFAULT;
      return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Stat(STATSTG* stat, DWORD) override {
      *stat = {};
      return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Read(void*, ULONG, ULONG*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CopyTo(IStream*, ULARGE_INTEGER, ULARGE_INTEGER*, ULARGE_INTEGER*) override {
      return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Revert() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override {
      return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Clone(IStream**) override { return E_NOTIMPL; }

   private:
    SmallDisk& disk;
    std::uint64_t place = 0;
  };
  class Pin final : public InputPin {
   public:
    explicit Pin(SmallDisk& owner) : InputPin(owner, L"In"), disk(owner) {}
    ~Pin() = default;

   protected:
    void* Find(REFIID iid) override {
      return iid == IID_IStream ? static_cast<IStream*>(&disk.stream) : InputPin::Find(iid);
    }
    std::vector<MediaType> Types() override { return {}; }
    bool Takes(const AM_MEDIA_TYPE& type) override { return type.majortype == MEDIATYPE_Stream; }
    HRESULT OnSample(IMediaSample&) override { return E_UNEXPECTED; }
    void OnEnd() override {}
    void OnBeginFlush() override {}
    void OnEndFlush() override {}

   private:
    SmallDisk& disk;
  };

  Pin pin;
  Stream stream;
};

}  // namespace quorvex
