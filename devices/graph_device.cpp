#include "devices/graph_device.h"

#include <memory>
#include <new>

#include "panel/main_window.h"
#include "video/video_window.h"

namespace quorvex {

void CGraphDevice::QueryGraph(OpeningSteps& steps) {
  steps.Query(graph.Get(), IID_IMediaControl, mediaControl, "IID_IMediaControl");
  steps.Query(graph.Get(), IID_IMediaEventEx, mediaEvent, "IID_IMediaEventEx");
  steps.Query(graph.Get(), IID_IMediaSeeking, mediaSeeking, "IID_IMediaSeeking");
}

HRESULT CGraphDevice::ShowVideo(int width, int height) {
  if (!theVideoWindow) theVideoWindow.reset(new (std::nothrow) CVWindow);
  if (!theVideoWindow) {
    ReportError("Could not allocate CVWindow object");
    return E_OUTOFMEMORY;
  }
  OpeningSteps steps;
  if (!steps.Query(graph.Get(), IID_IVideoWindow, videoWindow, "IID_IVideoWindow")) return steps.Result();
  videoWindowHandle = theVideoWindow->Attach(videoWindow.Get(), width, height);
  if (videoWindowHandle != nullptr) return S_OK;
  videoWindow.Reset();
  return E_FAIL;
}

void CGraphDevice::HideVideo() {
  if (theVideoWindow) theVideoWindow->Detach();
  if (!videoWindow) return;
  videoWindow->put_Visible(0);  // OAFALSE
  videoWindow->put_Owner(0);
  videoWindow.Reset();
}

void CGraphDevice::FollowGraph() {
  mediaEvent->SetNotifyWindow(reinterpret_cast<OAHWND>(mainWindow), kGraphMessage, 0);
}

bool CGraphDevice::TakeEvent(GraphEvent& event) {
  LONG_PTR second = 0;
  if (!mediaEvent || FAILED(mediaEvent->GetEvent(&event.code, &event.first, &second, 0))) return false;
  mediaEvent->FreeEventParams(event.code, event.first, second);
  return true;
}

}  // namespace quorvex
