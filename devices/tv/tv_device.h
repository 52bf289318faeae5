// The TV device: shows the picture of a capture card, a TV tuner or one of its other inputs, through a
// capture graph; channels, captions and adjustment of the picture.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/geometry.h"
#include "devices/graph_device.h"
#include "devices/tv/caption_chain.h"
#include "devices/tv/tv_settings.h"

namespace quorvex {

// What a recording has come to.
struct RecordingReport {
  std::int64_t frames = 0;   // in the file
  std::int64_t dropped = 0;  // lost
  std::int64_t length = 0;   // units of 100 ns
};

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
  // What comes over the air cannot be held or stopped; both keys are for recordings. A recording that is held
  // goes on to be one until it is stopped.
  bool Pause() override;
  bool Stop() override;

  // Records into the capture file, once the user has confirmed it. The preview goes on meanwhile.
  bool Record() override;
  void OnRecordTick() override;

  // Makes a file of this size (megabytes, at least 1) the capture file; what is in it is lost. False when it
  // does not get its room, which has been told; it is the capture file even so.
  bool SetCaptureFile(const std::string& path, std::uint16_t megabytes) override;

  // Asks for a file and copies the capture file there; the text line tells how that goes, and Esc ends it.
  // False when nothing was saved.
  bool SaveCaptureFile(HWND owner);

  // What the recording that runs has come to, or the last one; none before the first.
  std::optional<RecordingReport> Recorded();

  // Shows the platform's dialog for the format of the recorded sound; nothing without a sound input that has
  // formats.
  void ChooseAudioFormat(HWND owner);
  [[nodiscard]] bool HasAudioFormat() const { return static_cast<bool>(audioStream); }

  // The options of recording. Sound, frame rate and master stream act on what is built next, which while
  // nothing is recorded is the next recording; the frame rate also on the next preview.
  CaptureSettings capture;

  // A card that is pulled out is told on the text line, and its picture goes. The device stays, without a
  // picture, until one is opened anew. That and a file that cannot be written end a recording.
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

  // The tuner's input. Another one brings its own list of channels and its last channel; so does the same
  // anew.
  [[nodiscard]] TunerFeed TunerInput() const { return tunerInput; }
  void SetTunerInput(TunerFeed input);

  // Whether captions get a background.
  void SetCaptionBackground(bool opaque);

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
  bool RenderCapture();
  bool RenderCaptureSteps();
  bool RenderIntoFile(const ComPtr<IBaseFilter>& filter, const char* message);
  bool OpenOutputFile();
  void RemoveOutputFile();
  void RemoveRenderedFilters();
  void RebuildPreview();
  bool ShowPreview();
  HRESULT FindPreviewWindow(const char* message);
  HRESULT ApplyCaptureFrameRate(const char* message);
  void ReleaseGraph();
  void StopGraph();
  HRESULT FindInterface(const GUID* category, const ComPtr<IBaseFilter>& filter, REFIID iid, void** to) {
    return builder->FindInterface(category, filter.Get(), iid, to);
  }
  HRESULT ShowDialog(CaptureDialog dialog, HWND parent);
  void EndPicture();

  // Recording.
  bool HasCaptureFile();
  bool BeginRecording();
  bool GraphFails(HRESULT result, const char* verb);
  void EndRecording(const std::string& reason);
  RecordingReport CountsNow();
  void FinishLastRecording();
  // What an event of the graph tells: the card is gone, something in the graph cannot go on; and why it could
  // not be written, for the text line.
  static bool IsLoss(const GraphEvent& event);
  static bool IsFailure(const GraphEvent& event);
  static std::string WritingFailure(HRESULT result);
  bool ApplyCaptureFile();
  bool AllocateCaptureFile();

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

  // Says on the text line what the card refuses, until it does what it is asked again; `told` is what it
  // says.
  static void TellRefusal(HRESULT result, const std::string& text, std::string& told);

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
  ComPtr<IBaseFilter> multiplexer;  // these three while there is a graph that records
  ComPtr<IFileSinkFilter> fileWriter;
  ComPtr<IConfigAviMux> muxConfiguration;
  ComPtr<IAMTVTuner> tuner;      // null: the card has none
  ComPtr<IAMCrossbar> crossbar;  // null: the card has one input
  ComPtr<IAMVfwCaptureDialogs> dialogs;
  ComPtr<IAMVideoProcAmp> pictureControls;  // once they were asked for
  CaptionChain captionChain;

  bool previewFromCapturePin = false;  // the device has no preview pin
  Size nativeSize;                     // of the device's picture; zeros until it is known
  TunerFeed tunerInput = TunerFeed::kAntenna;
  VideoInput videoInput = VideoInput::kTuner;
  std::uint16_t captureMegabytes = 0;  // the capture file's size, once it was set
  DWORD recordStartTime = 0;           // ms, of timeGetTime
  bool capturing = false;              // the user has confirmed the recording
  std::optional<RecordingReport> lastRecording;
  int lowestNumber = 0;
  int previousIndex = 0;       // the place in the list before the last change
  bool listStands = false;     // the list of channels is that of tunerInput
  std::string refusedChannel;  // what the text line told of these two last, when the card had refused them
  std::string refusedInput;
  bool gone = false;  // the card was pulled out
};

}  // namespace quorvex
