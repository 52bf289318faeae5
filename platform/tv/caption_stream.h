// What runs through the caption chain: line 21 as a card reads it, its byte pairs, and decoded screens.
#pragma once

#include <windows.h>

#include <strmif.h>

#include "platform/common/caption_screen.h"
#include "platform/common/media_type.h"

namespace quorvex {

// A screen to be laid over pictures; a sample of the last kind of stream is one of these.
struct ShownCaptions {
  CaptionScreen screen;
  bool opaque = true;
};

// Of a card's VBI pin.
MediaType VbiType();
// Of decoded byte pairs (MEDIASUBTYPE_Line21_BytePair).
MediaType BytePairType();
// Of decoded screens.
MediaType CaptionsType();

constexpr std::size_t kPairBytes = 2;

// Whether two types are of one kind.
bool IsOfKind(const AM_MEDIA_TYPE& type, const MediaType& kind);

// A sample's bytes; empty when it has none.
struct SampleBytes {
  const BYTE* data = nullptr;
  std::size_t size = 0;
};
SampleBytes BytesOf(IMediaSample& sample);

// Fills a sample that holds so many bytes; false when it is too small.
bool FillSample(IMediaSample& sample, const void* bytes, std::size_t size);

}  // namespace quorvex
