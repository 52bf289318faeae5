// What a disc image that was opened promises whoever plays it.
#pragma once

#include <array>

#include "platform/cd/disc_image.h"
#include "platform/cd/disc_plan.h"
#include "tests/fuzz/fuzz_target.h"

namespace quorvex {

inline void CheckImage(const OpenedImage& opened) {
  if (const auto* error = std::get_if<DiscError>(&opened)) {
    Require(!error->text.empty(), "an error says why");
    return;
  }
  DiscImage& image = *std::get<std::unique_ptr<DiscImage>>(opened);
  const auto canRead = [&image](int frame) {
    std::array<std::byte, kAudioSectorBytes> sound{};
    return image.ReadSound(frame, sound);
  };
  Require(!image.Tracks().empty() && image.LeadOut() <= kMostFrames, "an image has tracks");
  Require(!canRead(-1) && !canRead(image.LeadOut()), "there is nothing beside the disc");
  for (const DiscTrack& track : image.Tracks()) {
    Require(track.length == 0 || (canRead(track.start) && canRead(track.start + track.length - 1)),
            "a track can be read from its beginning to its end");
  }
}

}  // namespace quorvex
