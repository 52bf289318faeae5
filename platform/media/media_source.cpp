#include "platform/media/media_source.h"

#include <vfwmsgs.h>
#include <windows.h>

#include <algorithm>

#include "platform/common/picture_feeder.h"
#include "platform/common/sound_feeder.h"

namespace quorvex {
namespace {

constexpr int kPicturePin = 0;
constexpr int kSoundPin = 1;

// The renderer shows one and may keep one, one is being filled, one is ready.
constexpr long kPictureBuffers = 4;
constexpr long kSoundBuffers = 8;

}  // namespace

HRESULT MediaSource::Load(LPCOLESTR fileName, const AM_MEDIA_TYPE* type) {
  if (fileName == nullptr) return E_POINTER;
  const std::scoped_lock lock(stateLock);
  if (file) return E_UNEXPECTED;
  const HRESULT result = MediaFile::Open(fileName, file);
  if (FAILED(result)) return result;
  path = fileName;
  if (type != nullptr) fileType = MediaType(*type);
  if (file->Picture() != nullptr) MakePicturePin();
  if (file->Sound() != nullptr) MakeSoundPin();
  std::vector<Playback::Track> tracks;
  if (picturePin) tracks.push_back({MediaFile::Kind::kPicture, picturePin.get(), pictureFeeder.get()});
  if (soundPin) tracks.push_back({MediaFile::Kind::kSound, soundPin.get(), soundFeeder.get()});
  if (tracks.empty()) {
    file.reset();
    return VFW_E_UNSUPPORTED_STREAM;
  }
  playback = std::make_unique<Playback>(*file, std::move(tracks));
  return S_OK;
}

void MediaSource::MakePicturePin() {
  const CodedStream coded = file->Coded(*file->Picture());
  const MediaTime frameTime = file->FrameTime();
  const MediaType type = MediaType::Rgb32(coded.parameters->width, coded.parameters->height, frameTime);
  ALLOCATOR_PROPERTIES buffers{};
  buffers.cBuffers = kPictureBuffers;
  buffers.cbBuffer = static_cast<long>(type.Get().lSampleSize);
  picturePin = std::make_unique<MediaPin>(*this, static_cast<Seekable&>(*this), kPicturePin, L"Picture", type,
                                          buffers);
  auto feeder = std::make_unique<PictureFeeder>(*this, *picturePin, coded, frameTime);
  if (feeder->IsOpen()) {
    pictureFeeder = std::move(feeder);
  } else {
    picturePin.reset();
  }
}

void MediaSource::MakeSoundPin() {
  const CodedStream coded = file->Coded(*file->Sound());
  const int rate = DeliveredRate(coded.parameters->sample_rate);
  const MediaType type = MediaType::Pcm16(kSoundChannels, rate);
  ALLOCATOR_PROPERTIES buffers{};
  buffers.cBuffers = kSoundBuffers;
  buffers.cbBuffer = SamplesPerBuffer(rate) * static_cast<long>(type.Get().lSampleSize);
  soundPin =
      std::make_unique<MediaPin>(*this, static_cast<Seekable&>(*this), kSoundPin, L"Sound", type, buffers);
  auto feeder = std::make_unique<SoundFeeder>(*soundPin, coded);
  if (feeder->IsOpen()) {
    soundFeeder = std::move(feeder);
  } else {
    soundPin.reset();
  }
}

HRESULT MediaSource::GetCurFile(LPOLESTR* fileName, AM_MEDIA_TYPE* type) {
  if (fileName == nullptr) return E_POINTER;
  const std::scoped_lock lock(stateLock);
  if (type != nullptr) fileType.CopyTo(*type);
  *fileName = nullptr;
  if (!file) return S_FALSE;
  *fileName = static_cast<LPOLESTR>(::CoTaskMemAlloc((path.size() + 1) * sizeof(wchar_t)));
  if (*fileName == nullptr) return E_OUTOFMEMORY;
  std::copy_n(path.c_str(), path.size() + 1, *fileName);
  return S_OK;
}

std::vector<MediaPin*> MediaSource::MediaPins() {
  std::vector<MediaPin*> pins;
  if (picturePin) pins.push_back(picturePin.get());
  if (soundPin) pins.push_back(soundPin.get());
  return pins;
}

std::vector<IPin*> MediaSource::Pins() {
  const std::vector<MediaPin*> pins = MediaPins();
  return {pins.begin(), pins.end()};
}

HRESULT MediaSource::OnStart() {
  seeks.Forget();
  for (MediaPin* pin : MediaPins()) {
    const HRESULT result = pin->Start();
    if (FAILED(result)) return result;
  }
  Move({resting, segment.stop});
  if (playback) playback->Start(segment);
  return S_OK;
}

void MediaSource::OnStop() {
  for (MediaPin* pin : MediaPins()) pin->Stop();
  if (playback) playback->Halt();
}

void MediaSource::OnHalt() {
  const MediaTime reached = Position();
  const std::scoped_lock lock(placeLock);
  resting = reached;
}

void MediaSource::Move(const Segment& target) {
  const std::scoped_lock lock(placeLock);
  segment = target;
  resting = target.start;
}

void MediaSource::SeekTo(int pin, const SeekWish& wish) {
  const std::scoped_lock lock(stateLock);
  if (!seeks.Arrives(pin, wish)) return;
  const bool plays = State() != State_Stopped;
  const Segment target = Target(wish);
  if (plays) playback->Halt();
  Move(target);
  if (plays) playback->Start(target);
}

// What a seek asks for. One that moves the stop position only leaves the graph's stream time as it is, so
// that samples' times must count on from where they did.
Segment MediaSource::Target(const SeekWish& wish) {
  const auto resolve = [](const SeekWish::Place& place, MediaTime base) {
    return std::max<MediaTime>(0, place.relative ? base + place.at : place.at);
  };
  const Segment played = Played();
  Segment target{Position(), played.stop, played.Origin()};
  if (wish.start) target = {resolve(*wish.start, target.start), played.stop};
  if (wish.stop)
    target.stop =
        resolve(*wish.stop, wish.stopCountsFromStart ? target.start : std::min(played.stop, Length()));
  // A stop position at the end of the file is none: the last picture may last longer than the file says.
  if (target.stop >= Length()) target.stop = kForever;
  return target;
}

// Some files do not tell it: recordings that were never ended.
MediaTime MediaSource::Length() const { return Duration() > 0 ? Duration() : kForever; }

Segment MediaSource::Played() {
  const std::scoped_lock lock(placeLock);
  return segment;
}

MediaTime MediaSource::Position() {
  const std::optional<REFERENCE_TIME> streamTime = StreamTime();
  const std::scoped_lock lock(placeLock);
  if (!streamTime) return resting;
  const MediaTime end = std::min(segment.stop, std::max(Length(), segment.start));
  return std::clamp(segment.Origin() + *streamTime, segment.start, end);
}

}  // namespace quorvex
