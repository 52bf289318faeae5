// The Open File dialog: the platform's own, with the Media Select panel below it.
#pragma once

#include <string>

namespace quorvex {

enum class OpenFileOutcome { kFilesPicked, kOpenPlaylist, kCancelled };

struct OpenFileResult {
  OpenFileOutcome outcome;
  std::string selection;  // of kFilesPicked, as BuildPreviewPlaylist takes it
};

// Shows the dialog until it is closed. With kOpenPlaylist `currentPlaylist` is the album to play. Whatever
// the outcome, `currentPlaylist` is the album that was selected last in the panel.
OpenFileResult RunOpenFileDialog();

}  // namespace quorvex
