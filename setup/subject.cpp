#include "setup/subject.h"

#include "devices/current_device.h"

namespace quorvex {

SetupSubject CurrentSubject() {
  SetupSubject subject;
  if (currentDevice) subject.device = currentDevice->kind;
  if (CTVDevice* const tv = CurrentTvDevice()) {
    subject.hasTuner = tv->HasTuner();
    subject.recording = tv->recording;
    subject.recordsSound = tv->capture.audio;
    subject.hasSourceDialog = tv->HasCaptureDialog(CaptureDialog::kSource);
    subject.hasFormatDialog = tv->HasCaptureDialog(CaptureDialog::kFormat);
    subject.hasDisplayDialog = tv->HasCaptureDialog(CaptureDialog::kDisplay);
  }
  return subject;
}

CTVDevice* CurrentTvDevice() { return dynamic_cast<CTVDevice*>(currentDevice.get()); }

}  // namespace quorvex
