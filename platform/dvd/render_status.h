// What an application is told of the rendering of a disc.
#pragma once

#include <windows.h>

#include <strmif.h>
#include <vfwmsgs.h>

#include "platform/dvd/opened_disc.h"

namespace quorvex {

// Video, sound and subpictures; these are drawn into the video.
constexpr int kDvdStreams = 3;

// VFW_E_COPYPROT_FAILED: "copy protection could not be established"; mingw-w64 has no name for it.
constexpr HRESULT kCopyProtected = static_cast<HRESULT>(0x8004025D);

// Which streams could not be rendered, as AM_DVD_STREAM_FLAGS.
inline void FailStreams(AM_DVD_RENDERSTATUS& status, DWORD streams) {
  for (DWORD flag = AM_DVD_STREAM_VIDEO; flag <= AM_DVD_STREAM_SUBPIC; flag <<= 1)
    if ((streams & flag) != 0 && (status.dwFailedStreamsFlag & flag) == 0) ++status.iNumStreamsFailed;
  status.dwFailedStreamsFlag |= streams;
  // Captions come with the video.
  if ((streams & AM_DVD_STREAM_VIDEO) != 0) status.bNoLine21In = status.bNoLine21Out = TRUE;
}

// Tells of a disc that cannot be opened; answers what the rendering answers. `named`: by the application, not
// looked for in drives.
inline HRESULT TellFault(DiscFault fault, bool named, AM_DVD_RENDERSTATUS& status) {
  constexpr DWORD kAll = AM_DVD_STREAM_VIDEO | AM_DVD_STREAM_AUDIO | AM_DVD_STREAM_SUBPIC;
  switch (fault) {
    case DiscFault::kNone: return S_OK;
    case DiscFault::kNoDisc:
      (named ? status.bDvdVolInvalid : status.bDvdVolUnknown) = TRUE;
      return named ? VFW_E_DVD_RENDERFAIL : S_FALSE;  // into a drive a disc may come yet
    case DiscFault::kDamaged: status.bDvdVolInvalid = TRUE; return VFW_E_DVD_INVALID_DISC;
    case DiscFault::kScrambled: break;
  }
  status.hrVPEStatus = kCopyProtected;
  status.iNumStreams = kDvdStreams;
  FailStreams(status, kAll);
  return kCopyProtected;
}

}  // namespace quorvex
