// The process-wide values that the rooms share. Everything else lives in an object.
#pragma once

#include <string>

#include "devices/device_type.h"

namespace quorvex {

// The current device's type. Between start-up and the automatic start it holds the type to start.
extern DeviceType currentDeviceType;

// The capture device's index that the open TV device uses, -1 when none; and the one for the automatic start.
extern int currentCaptureDevice;
extern int startCaptureDevice;

// Whether a DVD could be played at start-up, and whether there was a mixer.
extern bool dvdAvailable;
extern bool mixerAvailable;

// The session ends: there is nobody to answer any more, nor time to wait.
extern bool sessionEnds;

// The files in the Windows directory: quorvex.ini, mfiles.abm, cd.abm.
extern std::string configPath;
extern std::string mediaAlbumPath;
extern std::string cdAlbumPath;

// The section of the album store that the media-file device plays; at most 32 characters, empty for none.
extern std::string currentPlaylist;

}  // namespace quorvex
