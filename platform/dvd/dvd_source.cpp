#include "platform/dvd/dvd_source.h"

#include "platform/dvd/dvd_interfaces.h"

#include <algorithm>
#include <utility>

namespace quorvex {
namespace {

// The renderer shows one and may keep one, one is being filled, one is ready.
constexpr long kPictureBuffers = 4;
constexpr long kSoundBuffers = 8;

// Wide when anything on the disc is; PAL when its first titles are.
Canvas CanvasFor(const DiscTables& tables) {
  using Part = StreamAttributes::Part;
  const bool wide = std::any_of(tables.titleSets.begin(), tables.titleSets.end(),
                                [](const StreamAttributes& set) { return set.IsWide(Part::kTitle); });
  return {wide, tables.Of(1).IsPal(Part::kTitle)};
}

MediaType PictureType(const Canvas& canvas, bool pal) {
  return MediaType::Rgb32(canvas.Extent().width, canvas.Extent().height,
                          pal ? kSecond / 25 : kSecond * 1001 / 30000);
}

long PictureBytes(const Canvas& canvas) {
  return static_cast<long>(canvas.Extent().width) * canvas.Extent().height * 4;
}

}  // namespace

DvdSource::DvdSource(OpenedDisc opened)
    : FilterBase(kDvdSourceClass),
      disc(std::move(opened)),
      canvas(CanvasFor(disc.tables)),
      picturePin(*this, L"Picture",
                 PictureType(canvas, disc.tables.Of(1).IsPal(StreamAttributes::Part::kTitle)),
                 kPictureBuffers, PictureBytes(canvas)),
      soundPin(*this, L"Sound", MediaType::Pcm16(kSoundChannels, SoundWorker::kRate), kSoundBuffers,
               SamplesPerBuffer(SoundWorker::kRate) * kSoundChannels * 2L),
      window(picturePin, canvas),
      player(*disc.navigator, {*this, picturePin, soundPin, *this, captions, disc.tables, canvas,
                               disc.isThere, [this] { return window.ShownSize(); }}),
      control(*this, player, disc.tables, window),
      info(*this, player, disc.tables, disc.path),
      line21(*this, captions) {}

void* DvdSource::Find(REFIID iid) {
  if (iid == __uuidof(IDvdControl)) return static_cast<IDvdControl*>(&control);
  if (iid == __uuidof(IDvdInfo)) return static_cast<IDvdInfo*>(&info);
  if (iid == kIidLine21Decoder) return static_cast<IAMLine21Decoder*>(&line21);
  return FilterBase::Find(iid);
}

HRESULT DvdSource::OnStart() {
  av_log_set_level(AV_LOG_QUIET);
  for (DvdPin* pin : {&picturePin, &soundPin}) {
    const HRESULT result = pin->Start();
    if (FAILED(result)) return result;
  }
  player.Start();
  return S_OK;
}

void DvdSource::OnStop() {
  picturePin.Stop();
  soundPin.Stop();
  player.Halt();
}

void DvdSource::Tell(long code, LONG_PTR first, LONG_PTR second) { FilterBase::Tell(code, first, second); }

}  // namespace quorvex
