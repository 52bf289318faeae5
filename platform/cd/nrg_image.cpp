#include "platform/cd/nrg_image.h"

#include <cdio/cdio.h>
#include <cdio/logging.h>

#include <algorithm>

namespace quorvex {
namespace {

struct CdioCloser {
  void operator()(CdIo_t* image) const { cdio_destroy(image); }
};
using OwnedCdio = std::unique_ptr<CdIo_t, CdioCloser>;

// The library's own handler ends the process on an error.
void IgnoreLog(cdio_log_level_t, const char*) {}

class NrgImage final : public DiscImage {
 public:
  NrgImage(OwnedCdio opened, std::vector<DiscTrack> itsTracks, int length)
      : image(std::move(opened)), tracks(std::move(itsTracks)), leadOut(length) {}

  [[nodiscard]] const std::vector<DiscTrack>& Tracks() const override { return tracks; }
  [[nodiscard]] int LeadOut() const override { return leadOut; }

  bool ReadSound(int frame, std::span<std::byte> sound) override {
    const auto count = static_cast<std::uint32_t>(sound.size() / kAudioSectorBytes);
    return cdio_read_audio_sectors(image.get(), sound.data(), frame, count) == DRIVER_OP_SUCCESS;
  }

 private:
  OwnedCdio image;
  std::vector<DiscTrack> tracks;
  int leadOut;
};

}  // namespace

OpenedImage OpenNrgImage(const std::string& path) {
  cdio_log_set_handler(IgnoreLog);
  OwnedCdio image(cdio_open(path.c_str(), DRIVER_NRG));
  if (!image) return DiscError{"it is no Nero image"};
  const int first = cdio_get_first_track_num(image.get());
  const int count = cdio_get_num_tracks(image.get());
  const int leadOut = cdio_get_track_lsn(image.get(), CDIO_CDROM_LEADOUT_TRACK);
  if (first == CDIO_INVALID_TRACK || count < 1 || count > kMostTracks || leadOut < 1 ||
      leadOut > kMostFrames) {
    return DiscError{"its table of contents makes no sense"};
  }
  std::vector<DiscTrack> tracks;
  for (int i = 0; i < count; ++i) {
    const auto number = static_cast<track_t>(first + i);
    const int start = cdio_get_track_lsn(image.get(), number);
    const int end =
        i + 1 < count ? cdio_get_track_lsn(image.get(), static_cast<track_t>(number + 1)) : leadOut;
    if (start < 0 || end < start || end > leadOut) return DiscError{"its table of contents makes no sense"};
    tracks.push_back({cdio_get_track_format(image.get(), number) == TRACK_FORMAT_AUDIO, start, end - start});
  }
  return std::make_unique<NrgImage>(std::move(image), std::move(tracks), leadOut);
}

}  // namespace quorvex
