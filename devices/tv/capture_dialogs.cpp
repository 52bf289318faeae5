// The dialogs of a capture device's driver. The graph stands still while one is open.
#include <windows.h>

#include <vfwmsgs.h>

#include "devices/tv/tv_device.h"

namespace quorvex {

bool CTVDevice::HasCaptureDialog(CaptureDialog dialog) {
  return dialogs && dialogs->HasDialog(static_cast<int>(dialog)) == S_OK;
}

HRESULT CTVDevice::ShowDialog(CaptureDialog dialog, HWND parent) {
  if (!dialogs) return E_NOINTERFACE;
  StopGraph();
  return dialogs->ShowDialog(static_cast<int>(dialog), parent);
}

// Where the new format does not fit what is connected, the preview is built anew.
void CTVDevice::ShowCaptureFormatDialog(HWND parent) {
  if (ShowDialog(CaptureDialog::kFormat, parent) == VFW_E_CANNOT_CONNECT) RebuildPreview();
  Play(0, 0);
}

void CTVDevice::ShowCaptureSourceDialog(HWND parent) {
  ShowDialog(CaptureDialog::kSource, parent);
  Play(0, 0);
}

void CTVDevice::ShowCaptureDisplayDialog(HWND parent) {
  ShowDialog(CaptureDialog::kDisplay, parent);
  Play(0, 0);
}

}  // namespace quorvex
