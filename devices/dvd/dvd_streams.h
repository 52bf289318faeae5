// The choice of a disc's subtitles and audio tracks: their menu by the names of languages, and what is
// chosen.
#pragma once

#include "base/handles.h"
#include "devices/dvd/dvd_navigator.h"

namespace quorvex {

class DvdStreams {
 public:
  // The navigator outlives this; it may have no interfaces, and then there are no streams.
  explicit DvdStreams(const DvdNavigator& itsNavigator) : navigator(itsNavigator) {}

  // The pop-up menu of both, with what is on checked; null when the platform makes none.
  UniqueMenu BuildMenu();

  // These append one item for every stream, with the command `first` for stream 0, check the one that is on,
  // and answer how many streams there are. A stream that has no language as such is switched to for its
  // attributes.
  int ListSubtitles(HMENU menu, int first);
  int ListAudioTracks(HMENU menu, int first);

  // Choices from the menu, by command. False when the navigator refuses; the choice then stays as it was.
  bool SelectSubtitle(int command);
  bool SelectAudioTrack(int command);

 private:
  const DvdNavigator& navigator;
  ULONG currentSubpicture = 0;
  ULONG currentAudio = 0;
  bool subtitlesShown = false;  // the user chose subtitles
};

}  // namespace quorvex
