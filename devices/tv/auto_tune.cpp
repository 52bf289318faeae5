// The run through all channels of an input that makes its list of those with a signal.
#include <windows.h>

#include "devices/tv/channel_list.h"
#include "devices/tv/tv_device.h"
#include "panel/answer_watch.h"
#include "panel/main_window.h"
#include "panel/status_display.h"
#include "video/video_window.h"

namespace quorvex {

void CTVDevice::AutoTuneChannels(HWND /*window*/, int tunerInputType) {
  if (!tuner) return;
  EndEntry();
  const TunerFeed input = tunerInputType == 0 ? TunerFeed::kCable : TunerFeed::kAntenna;
  listStands = listStands && input == tunerInput;
  tunerInput = input;
  videoInput = VideoInput::kTuner;
  RouteTo(videoInput);
  SetDisplayElement(kChannelLabel, 1);
  tuner->put_InputType(0, static_cast<TunerInputType>(tunerInput));
  ReadTunerRange();
  ShowOsdText("");
  ::UpdateWindow(mainWindow);
  if (theVideoWindow) ::UpdateWindow(theVideoWindow->Frame());
  const std::vector<int> found = SearchChannels();
  tuner->StoreAutoTune();
  UpdateStore([&](IniDocument& store) { WriteChannels(store, tunerInput, found); });
  listStands = LoadChannelList() || listStands;
  TuneCurrentEntry();
}

std::vector<int> CTVDevice::SearchChannels() {
  std::vector<int> found;
  const LongWork search;
  SetPointer(IDC_WAIT);
  const int last = LastChannelOfRange(lowestNumber, highestNumber);
  for (int channel = lowestNumber; channel <= last; ++channel) {
    LONG signal = 0;
    tuner->AutoTune(channel, &signal);
    if (signal != 0) found.push_back(channel);
    ShowDisplayNumber(channel, true, false);
  }
  SetPointer(IDC_ARROW);
  return found;
}

}  // namespace quorvex
