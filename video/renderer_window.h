// The renderer's own window, a child of the video window's frame: what it does with the mouse.
#pragma once

#include <windows.h>

#include <strmif.h>

#include <control.h>

namespace quorvex {

// Makes a renderer's window a child of the frame and lets it be dragged by the picture. Answers that window;
// null when none came.
HWND AdoptRendererWindow(IVideoWindow* renderer, HWND frame);

}  // namespace quorvex
