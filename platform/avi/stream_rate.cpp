#include "platform/avi/stream_rate.h"

#include <cmath>
#include <cstdlib>

namespace quorvex {
namespace {

constexpr std::uint32_t kMostPicturesASecond = 240;
// Less than a picture lasts, and more than the times of samples are off.
constexpr MediaTime kUnseen = 20 * kMillisecond;
// A source is never so far off; what seems so is not worth following.
constexpr double kMostOff = 0.1;

constexpr MediaTime TimeOf(const UnitRate& rate) { return rate.TimeOf(1); }

}  // namespace

UnitRate PictureRate(MediaTime frameTime) {
  for (std::uint32_t whole = 1; whole <= kMostPicturesASecond; ++whole) {
    for (const UnitRate& usual : {UnitRate{whole, 1}, UnitRate{whole * 1000, 1001}}) {
      if (std::abs(TimeOf(usual) - frameTime) <= 1) return usual;
    }
  }
  return {static_cast<std::uint32_t>(kSecond), static_cast<std::uint32_t>(frameTime)};
}

UnitRate RateBeside(UnitRate rate, const StreamPace& pace, const StreamPace& master) {
  if (pace.taken < kSecond || master.taken < kSecond) return rate;
  const MediaTime apart = (pace.nominal - pace.taken) - (master.nominal - master.taken);
  const double ratio = (static_cast<double>(pace.nominal) / static_cast<double>(pace.taken)) /
                       (static_cast<double>(master.nominal) / static_cast<double>(master.taken));
  if (std::abs(apart) <= kUnseen || std::abs(ratio - 1) > kMostOff) return rate;
  const double units = static_cast<double>(rate.rate) / rate.scale * ratio;
  // As fine as 32 bits allow.
  const double scale = std::floor(std::min(1e6, 4e9 / units));
  return {static_cast<std::uint32_t>(std::llround(units * scale)), static_cast<std::uint32_t>(scale)};
}

}  // namespace quorvex
