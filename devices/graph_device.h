// A device that plays through a filter graph and shows its picture in the video window.
#pragma once

#include "base/line21_interface.h"
#include "devices/device.h"
#include "devices/opening_steps.h"

namespace quorvex {

class CGraphDevice : public CDevice {
 protected:
  struct GraphEvent {
    long code = 0;
    LONG_PTR first = 0;
    LONG_PTR second = 0;
  };

  using CDevice::CDevice;

  // Asks the graph for its control, events and seeking.
  void QueryGraph(OpeningSteps& steps);

  // Shows a picture of a native size (pixels; neither may be 0) in the video window, which is made when there
  // is none. Answers S_OK; another code has been reported, but for E_FAIL: the window has no frame.
  HRESULT ShowVideo(int width, int height);

  // The same of a picture whose window `videoWindow` holds already; false when the video window cannot be
  // made (reported) or has no frame.
  bool AttachVideo(int width, int height);

  // Gives the video window the picture of a graph that was built anew. Without one the picture is not shown:
  // a renderer on its own would open a bare window when the graph runs.
  void ReattachVideo();

  // Takes the picture back from the video window; to be done before the graph goes.
  void HideVideo();

  // Has the control panel told of the graph's events by kGraphMessage.
  void FollowGraph();

  // Takes the next event; false when there is none. Its parameters are freed already and count where they
  // are numbers.
  bool TakeEvent(GraphEvent& event);

  // Tells the decoder of captions whether to show them, and on which background; the first of these also on
  // button and lamp. Nothing without a decoder.
  void ApplyCaptionState();
  void ApplyCaptionBackground();

  ComPtr<IGraphBuilder> graph;
  ComPtr<IMediaEventEx> mediaEvent;
  ComPtr<IBasicAudio> basicAudio;
  ComPtr<IVideoWindow> videoWindow;         // the renderer's, lent to the video window
  ComPtr<IAMLine21Decoder> captionDecoder;  // null: there are no captions to be shown

 private:
  static bool HasVideoWindow();
};

}  // namespace quorvex
