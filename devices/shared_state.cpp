#include "devices/shared_state.h"

namespace quorvex {

DeviceType currentDeviceType = DeviceType::kNone;
int currentCaptureDevice = -1;
int startCaptureDevice = -1;
bool dvdAvailable = false;
bool mixerAvailable = false;
bool sessionEnds = false;
std::string configPath;
std::string mediaAlbumPath;
std::string cdAlbumPath;
std::string currentPlaylist;

}  // namespace quorvex
