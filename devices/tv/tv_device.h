// The TV device: shows the picture of a capture card, a TV tuner or one of its other inputs, through a
// capture graph; channels, captions and adjustment of the picture.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "base/geometry.h"
#include "devices/graph_device.h"
#include "devices/tv/caption_chain.h"
#include "devices/tv/tv_settings.h"

namespace quorvex {

class CTVDevice final : public CGraphDevice {
 public:
  CTVDevice();
  ~CTVDevice() override;

  // Opens the capture device that currentCaptureDevice counts.
  bool Open() override;
  bool QueryControls() override;
  bool Activate() override;
  bool Close() override;

  bool Play(int item, int reserved) override;
  // What comes over the air cannot be held or stopped; both keys are for recordings.
  bool Pause() override { return true; }
  bool Stop() override { return true; }

  // A card that is pulled out is told on the text line, and its picture goes. The device stays, without a
  // picture, until one is opened anew.
  void OnGraphEvent() override;

  bool ToggleClosedCaption() override;
  bool SelectVideoInput() override;

  // Channels: all of these do nothing without a tuner, or while another input is shown.
  bool Up() override;
  bool Down() override;
  void EnterDigit(int digit) override;
  bool ConfirmEntry() override;
  bool AddChannel() override;
  bool DeleteChannel() override;
  bool RecallLastChannel() override;

  // Puts the tuner on every channel of an input and keeps those with a signal. The user interface waits for
  // it.
  void AutoTuneChannels(HWND window, int tunerInputType) override;

  bool HasVideoAdjustment() override { return static_cast<bool>(pictureControls); }
  bool ShowVideoAdjustment() override;
  bool AdjustUp() override;
  bool AdjustDown() override;
  bool Increase() override;
  bool Decrease() override;

  bool HasCaptureDialog(CaptureDialog dialog) override;
  void ShowCaptureFormatDialog(HWND parent) override;
  void ShowCaptureSourceDialog(HWND parent) override;
  void ShowCaptureDisplayDialog(HWND parent) override;

  bool LoadSettings() override;
  bool SaveSettings() override;

  // Whether the card was pulled out while it was shown.
  [[nodiscard]] bool IsGone() const { return gone; }

  // What is shown, in words.
  [[nodiscard]] bool HasTuner() const { return static_cast<bool>(tuner); }
  [[nodiscard]] const char* InputName() const;

 private:
  // The graph.
  bool CreateCaptureFilters();
  bool AddVideoFilter();
  bool FindVideoFilter();
  void FindVideoInterfaces();
  bool AddAudioFilter();
  bool RenderPreview();
  void RenderPreviewPin();
  void AddCaptions();
  void RemoveRenderedFilters();
  void RebuildPreview();
  void ReleaseGraph();
  void StopGraph();
  HRESULT FindInterface(const GUID* category, const ComPtr<IBaseFilter>& filter, REFIID iid, void** to) {
    return builder->FindInterface(category, filter.Get(), iid, to);
  }
  HRESULT ShowDialog(CaptureDialog dialog, HWND parent);
  void EndPicture();

  // Inputs and channels.
  [[nodiscard]] bool IsTunerShown() const { return tuner && videoInput == VideoInput::kTuner; }
  void ApplyVideoInput();
  void RouteTo(VideoInput input);
  void ShowTunerInput();
  bool ApplyTunerInput();
  bool LoadChannelList();
  void ReadTunerRange();
  bool TuneChannel(int channel);
  bool TuneCurrentEntry();
  bool StepChannel(void (PlayOrder::*step)());
  void EndEntry();
  std::vector<int> SearchChannels();

  // Changes the settings' file; where it cannot be, the text line says so.
  static bool UpdateStore(const std::function<void(IniDocument&)>& change);

  // Says on the text line what the card refuses, until it does what it is asked again.
  void TellRefusal(HRESULT result, const std::string& text);

  // The picture.
  void ShowAdjustment();
  void ReadAdjustment();
  bool MoveAdjustment(int steps);
  bool ChangeValue(int steps);

  ComPtr<ICaptureGraphBuilder> builder;
  ComPtr<IBaseFilter> videoFilter;
  ComPtr<IBaseFilter> audioFilter;
  ComPtr<IAMStreamConfig> videoStream;
  ComPtr<IAMStreamConfig> audioStream;
  ComPtr<IAMTVTuner> tuner;      // null: the card has none
  ComPtr<IAMCrossbar> crossbar;  // null: the card has one input
  ComPtr<IAMVfwCaptureDialogs> dialogs;
  ComPtr<IAMVideoProcAmp> pictureControls;  // once they were asked for
  CaptionChain captionChain;

  bool previewFromCapturePin = false;  // the device has no preview pin
  Size nativeSize;                     // of the device's picture; zeros until it is known
  TunerFeed tunerInput = TunerFeed::kAntenna;
  VideoInput videoInput = VideoInput::kTuner;
  CaptureSettings capture;
  int lowestNumber = 0;
  int previousIndex = 0;    // the place in the list before the last change
  bool listStands = false;  // the list of channels is that of tunerInput
  bool refused = false;     // the text line tells of a refusal
  bool gone = false;        // the card was pulled out
};

}  // namespace quorvex
