// What a card receives: by its tuner, its crossbar and the stations that there are.
#pragma once

#include <windows.h>

#include <mutex>
#include <vector>

#include "platform/tv/card_table.h"
#include "platform/tv/scene.h"
#include "platform/tv/stations.h"

namespace quorvex {

// The tuner, then the video inputs; the crossbar's pins are numbered otherwise.
inline constexpr int kTunerInput = 0;

class Reception {
 public:
  Reception(const CardState& itsState, const CardTraits& itsTraits) : state(itsState), traits(itsTraits) {}

  // What comes in now. Safe from any thread.
  Scene Now();

  // Whether there is a station. The list (%LOCALAPPDATA%\Quorvex\channels.txt) is read anew when it has
  // changed.
  bool HasSignal(TunerInput input, int channel);

 private:
  [[nodiscard]] Scene Receive();
  void ReadList();

  const CardState& state;
  const CardTraits& traits;
  std::mutex lock;  // guards what follows
  std::vector<Station> stations;
  FILETIME listTime{};
  Scene scene;
  std::uint32_t seenRoute = ~0U;
  std::uint32_t seenChannel = 0;
  std::uint32_t seenAntenna = 0;
};

}  // namespace quorvex
