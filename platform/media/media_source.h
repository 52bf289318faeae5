// The source filter for media files: a picture pin and a sound pin with what the file decodes to.
#pragma once

#include <memory>
#include <string>

#include "platform/common/filter_base.h"
#include "platform/common/media_file.h"
#include "platform/media/media_pin.h"
#include "platform/media/playback.h"
#include "platform/media/shared_seeks.h"

namespace quorvex {

// {A2C5C3E4-6E0B-4F5B-9D43-51D3E8B0A7F1}
constexpr CLSID kMediaSourceClass = {
    0xa2c5c3e4, 0x6e0b, 0x4f5b, {0x9d, 0x43, 0x51, 0xd3, 0xe8, 0xb0, 0xa7, 0xf1}};

class MediaSource final : public FilterBase, public IFileSourceFilter, private Seekable {
 public:
  MediaSource() : FilterBase(kMediaSourceClass) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    return FilterBase::QueryInterface(iid, object);
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return FilterBase::AddRef(); }
  ULONG STDMETHODCALLTYPE Release() override { return FilterBase::Release(); }

  // Opens the file; the pins are there afterwards. Answers what MediaFile::Open does; E_UNEXPECTED for a
  // second file.
  HRESULT STDMETHODCALLTYPE Load(LPCOLESTR fileName, const AM_MEDIA_TYPE* type) override;
  HRESULT STDMETHODCALLTYPE GetCurFile(LPOLESTR* fileName, AM_MEDIA_TYPE* type) override;

 protected:
  ~MediaSource() override = default;
  void* Find(REFIID iid) override { return FindInterface<IBaseFilter, IFileSourceFilter>(this, iid); }
  std::vector<IPin*> Pins() override;
  HRESULT OnStart() override;
  void OnStop() override;
  void OnHalt() override;

 private:
  void SeekTo(int pin, const SeekWish& wish) override;
  Segment Played() override;
  MediaTime Position() override;
  [[nodiscard]] MediaTime Duration() const override { return file ? file->Duration() : 0; }
  // Where it ends at the latest.
  [[nodiscard]] MediaTime Length() const;

  void MakePicturePin();
  void MakeSoundPin();
  std::vector<MediaPin*> MediaPins();
  void Move(const Segment& target);
  Segment Target(const SeekWish& wish);

  std::wstring path;
  MediaType fileType;
  std::unique_ptr<MediaFile> file;
  std::unique_ptr<MediaPin> picturePin;
  std::unique_ptr<MediaPin> soundPin;
  std::unique_ptr<StreamFeeder> pictureFeeder;
  std::unique_ptr<StreamFeeder> soundFeeder;
  std::unique_ptr<Playback> playback;

  SharedSeeks seeks;      // guarded by stateLock
  std::mutex placeLock;   // guards what follows
  Segment segment;        // what is played
  MediaTime resting = 0;  // the place where the stream stands when it does not run
};

}  // namespace quorvex
