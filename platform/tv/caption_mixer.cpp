#include "platform/tv/caption_mixer.h"

#include <uuids.h>

#include <cstring>

namespace quorvex {
namespace {

constexpr std::ptrdiff_t kPixelBytes = 4;

// The pixels of a sample of MediaType::Rgb32.
PictureView ViewOf(const SampleBytes& bytes, const BITMAPINFOHEADER& bitmap) {
  const std::ptrdiff_t line = bitmap.biWidth * kPixelBytes;
  auto* data = const_cast<BYTE*>(bytes.data);  // it is read only
  return {data + line * (bitmap.biHeight - 1), -line, static_cast<int>(bitmap.biWidth),
          static_cast<int>(bitmap.biHeight)};
}

// Copies what of a picture fits into another.
void Copy(const PictureView& from, const PictureView& to) {
  const auto bytes = static_cast<std::size_t>(std::min(from.width, to.width) * kPixelBytes);
  for (int y = 0; y < std::min(from.height, to.height); ++y)
    std::memcpy(to.top + y * to.stride, from.top + y * from.stride, bytes);
}

}  // namespace

CaptionMixer::CaptionMixer()
    : ChainFilter(kCaptionMixerClass, {L"Pictures", L"Captions"}, {L"Output"}), delivery(Output(0)) {}

bool CaptionMixer::Takes(std::size_t input, const AM_MEDIA_TYPE& type) {
  if (input != kPictures) return IsOfKind(type, CaptionsType());
  const MediaType copy(type);
  const VIDEOINFOHEADER* picture = copy.Picture();
  return type.majortype == MEDIATYPE_Video && type.subtype == MEDIASUBTYPE_RGB32 && picture != nullptr &&
         picture->bmiHeader.biHeight > 0;
}

void CaptionMixer::OnBegin() {
  delivery.Begin();
  const std::scoped_lock guard(lock);
  captions = {};
}

HRESULT CaptionMixer::Take(std::size_t input, IMediaSample& sample) {
  if (input == kPictures) return TakePicture(sample);
  TakeCaptions(sample);
  return S_OK;
}

void CaptionMixer::TakeCaptions(IMediaSample& sample) {
  const SampleBytes bytes = BytesOf(sample);
  if (bytes.size != sizeof captions) return;
  const std::scoped_lock guard(lock);
  std::memcpy(&captions, bytes.data, sizeof captions);
}

ShownCaptions CaptionMixer::Captions() {
  const std::scoped_lock guard(lock);
  return captions;
}

HRESULT CaptionMixer::TakePicture(IMediaSample& sample) {
  const MediaType type = TypeAt(kPictures);
  const BITMAPINFOHEADER& bitmap = type.Picture()->bmiHeader;
  const SampleBytes bytes = BytesOf(sample);
  if (bytes.size <
      static_cast<std::size_t>(bitmap.biWidth) * static_cast<std::size_t>(bitmap.biHeight) * kPixelBytes)
    return E_UNEXPECTED;
  REFERENCE_TIME begin = 0;
  REFERENCE_TIME end = 0;
  std::optional<PictureDelivery::Times> times;
  if (SUCCEEDED(sample.GetTime(&begin, &end))) times = {begin, end};
  const ShownCaptions shown = Captions();
  const Fed fed = delivery.Deliver(times, [&](const PictureView& view) {
    Copy(ViewOf(bytes, bitmap), view);
    if (shown.screen != CaptionScreen{}) painter.Paint(view, shown.screen, shown.opaque);
    return true;
  });
  return fed == Fed::kMore ? S_OK : S_FALSE;
}

}  // namespace quorvex
