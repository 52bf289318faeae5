// A disc image, whatever its file format: the tracks, and the sound of its sectors.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include "platform/cd/disc_plan.h"
#include "platform/cd/sheet_reader.h"

namespace quorvex {

class DiscImage {
 public:
  DiscImage() = default;
  DiscImage(const DiscImage&) = delete;
  DiscImage& operator=(const DiscImage&) = delete;
  virtual ~DiscImage() = default;

  // The tracks, the first first; positions and lengths in frames from the start of the program area.
  [[nodiscard]] virtual const std::vector<DiscTrack>& Tracks() const = 0;
  [[nodiscard]] virtual int LeadOut() const = 0;

  // Reads whole sectors of sound (16-bit samples, low byte first, left before right) from a frame on. False
  // when the image's file cannot be read there; `sound` must be a multiple of 2352 bytes and lie within the
  // disc.
  virtual bool ReadSound(int frame, std::span<std::byte> sound) = 0;
};

using OpenedImage = std::variant<std::unique_ptr<DiscImage>, DiscError>;

}  // namespace quorvex
