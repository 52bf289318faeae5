#include "platform/tv/driver_dialogs.h"

#include <vfwmsgs.h>

#include <algorithm>
#include <string>
#include <vector>

#include "platform/tv/choice_dialog.h"
#include "platform/tv/crossbar_pins.h"
#include "platform/tv/display_dialog.h"
#include "platform/tv/graph_walk.h"

namespace quorvex {
namespace {

// VfwCaptureDialogs
constexpr int kSource = 1;
constexpr int kFormat = 2;
constexpr int kDisplay = 4;

std::vector<CaptureFormat> AllFormats(MediaTime frameTime) {
  std::vector<CaptureFormat> formats;
  for (const PixelLayout layout : {PixelLayout::kRgb24, PixelLayout::kYuy2}) {
    for (const Size size : kCaptureSizes) formats.push_back({layout, size, frameTime});
  }
  return formats;
}

std::wstring NameOf(const CaptureFormat& format) {
  const wchar_t* layout = format.layout == PixelLayout::kRgb24 ? L"RGB 24" : L"YUY2";
  return std::to_wstring(format.size.width) + L" x " + std::to_wstring(format.size.height) + L", " + layout;
}

}  // namespace

HRESULT DriverDialogs::HasDialog(int dialog) {
  if (dialog == kSource) return traits.hasTuner ? S_OK : S_FALSE;
  return dialog == kFormat || dialog == kDisplay ? S_OK : S_FALSE;
}

HRESULT DriverDialogs::ShowDialog(int dialog, HWND owner) {
  if (HasDialog(dialog) != S_OK) return E_INVALIDARG;
  if (filter.State() != State_Stopped) return VFW_E_NOT_STOPPED;
  if (dialog == kSource) return ChooseInput(owner);
  if (dialog == kFormat) return ChooseFormat(owner);
  RunDisplayDialog(owner, source);
  return S_OK;
}

HRESULT DriverDialogs::SendDriverMessage(int, int, LONG, LONG) { return E_NOTIMPL; }

HRESULT DriverDialogs::ChooseInput(HWND owner) {
  std::vector<std::wstring> names;
  for (int pin = 0; pin < kCrossbarPictures; ++pin) {
    const int input = InputOfPin(pin);
    names.push_back(input == 0 ? L"Tuner" : L"VIDEO " + std::to_wstring(input));
  }
  const std::optional<int> chosen =
      RunChoiceDialog(owner, L"Video Source", names, static_cast<int>(state.routed));
  if (chosen) state.routed = static_cast<std::uint32_t>(*chosen);
  return S_OK;
}

HRESULT DriverDialogs::ChooseFormat(HWND owner) {
  const CaptureFormat before = source.Format();
  const std::vector<CaptureFormat> formats = AllFormats(before.frameTime);
  std::vector<std::wstring> names;
  std::transform(formats.begin(), formats.end(), std::back_inserter(names), NameOf);
  const auto at = std::find(formats.begin(), formats.end(), before) - formats.begin();
  const std::optional<int> chosen = RunChoiceDialog(owner, L"Video Format", names, static_cast<int>(at));
  if (!chosen || *chosen == at) return S_OK;
  source.SetFormat(formats[static_cast<std::size_t>(*chosen)]);
  return HasConnections() ? VFW_E_CANNOT_CONNECT : S_OK;
}

bool DriverDialogs::HasConnections() {
  const std::vector<ComPtr<IPin>> pins = PinsOf(filter);
  return std::any_of(pins.begin(), pins.end(), [](const ComPtr<IPin>& pin) { return PeerOf(*pin.Get()); });
}

}  // namespace quorvex
