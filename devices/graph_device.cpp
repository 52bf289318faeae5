#include "devices/graph_device.h"

#include <memory>
#include <new>

#include "panel/control_panel.h"
#include "panel/main_window.h"
#include "panel/status_display.h"
#include "video/video_window.h"

namespace quorvex {

void CGraphDevice::QueryGraph(OpeningSteps& steps) {
  steps.Query(graph.Get(), IID_IMediaControl, mediaControl, "IID_IMediaControl");
  steps.Query(graph.Get(), IID_IMediaEventEx, mediaEvent, "IID_IMediaEventEx");
  steps.Query(graph.Get(), IID_IMediaSeeking, mediaSeeking, "IID_IMediaSeeking");
}

bool CGraphDevice::HasVideoWindow() {
  if (!theVideoWindow) theVideoWindow.reset(new (std::nothrow) CVWindow);
  if (!theVideoWindow) ReportError("Could not allocate CVWindow object");
  return static_cast<bool>(theVideoWindow);
}

HRESULT CGraphDevice::ShowVideo(int width, int height) {
  if (!HasVideoWindow()) return E_OUTOFMEMORY;
  OpeningSteps steps;
  if (!steps.Query(graph.Get(), IID_IVideoWindow, videoWindow, "IID_IVideoWindow")) return steps.Result();
  return AttachVideo(width, height) ? S_OK : E_FAIL;
}

bool CGraphDevice::AttachVideo(int width, int height) {
  if (!HasVideoWindow()) return false;
  videoWindowHandle = theVideoWindow->Attach(videoWindow.Get(), width, height);
  if (videoWindowHandle == nullptr) videoWindow.Reset();
  return videoWindowHandle != nullptr;
}

void CGraphDevice::ReattachVideo() {
  if (!videoWindow) return;
  if (theVideoWindow) {
    videoWindowHandle = theVideoWindow->Reattach(videoWindow.Get());
  } else {
    videoWindow->put_AutoShow(0);  // OAFALSE
  }
}

void CGraphDevice::HideVideo() {
  if (theVideoWindow) theVideoWindow->Detach();
  if (!videoWindow) return;
  videoWindow->put_Visible(0);  // OAFALSE
  videoWindow->put_Owner(0);
  videoWindow.Reset();
}

void CGraphDevice::ApplyCaptionState() {
  if (!captionDecoder) return;
  captionDecoder->SetServiceState(captionsOn ? kLine21StateOn : kLine21StateOff);
  SetButtonState(kCommandClosedCaption, captionsOn ? ButtonLook::kLit : ButtonLook::kNormal);
  SetDisplayElement(kCaptionLamp, captionsOn ? 1 : 0);
}

void CGraphDevice::ApplyCaptionBackground() {
  if (!captionDecoder) return;
  captionDecoder->SetDrawBackgroundMode(captionOpaque ? kLine21BackgroundOpaque
                                                      : kLine21BackgroundTransparent);
}

void CGraphDevice::FollowGraph() {
  if (mediaEvent) mediaEvent->SetNotifyWindow(reinterpret_cast<OAHWND>(mainWindow), kGraphMessage, 0);
}

bool CGraphDevice::TakeEvent(GraphEvent& event) {
  if (!mediaEvent || FAILED(mediaEvent->GetEvent(&event.code, &event.first, &event.second, 0))) return false;
  mediaEvent->FreeEventParams(event.code, event.first, event.second);
  return true;
}

}  // namespace quorvex
