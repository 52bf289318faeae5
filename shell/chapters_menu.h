// The pop-up menu of a DVD title's chapters.
#pragma once

#include <windows.h>

#include "base/handles.h"

namespace quorvex {

// "Chapters" and one item a chapter, ten a column; the playing chapter (1-based, 0 for none) is checked. An
// item's command is the chapter's index from 0.
UniqueMenu BuildChaptersMenu(int chapterCount, int playingChapter);

// Shows the chapters of the current DVD at a command's button; nothing for other devices.
void ShowChaptersMenu(int command);

}  // namespace quorvex
