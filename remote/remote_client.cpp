#include "remote/remote_client.h"

namespace quorvex {
namespace {

constexpr UINT kAnswerPatienceMs = 10000;
constexpr DWORD kPollMs = 5;

std::string stateText;

// The window that messages come from, and that the state comes to.
HWND CreateSender() {
  WNDCLASSA sender{};
  sender.lpfnWndProc = [](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> LRESULT {
    if (message != WM_COPYDATA) return ::DefWindowProcA(window, message, wParam, lParam);
    const auto& data = *reinterpret_cast<const COPYDATASTRUCT*>(lParam);
    if (data.dwData != kRemoteState) return 0;
    stateText.assign(static_cast<const char*>(data.lpData), data.cbData);
    return 1;
  };
  sender.lpszClassName = "QuorvexRemote";
  ::RegisterClassA(&sender);
  return ::CreateWindowA("QuorvexRemote", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
}

}  // namespace

HWND FindPanel() { return ::FindWindowA("PControl", "Quorvex"); }

std::optional<RemoteAnswer> Ask(HWND panel, ULONG_PTR kind, std::string_view bytes) {
  static const HWND sender = CreateSender();
  COPYDATASTRUCT data{kind, static_cast<DWORD>(bytes.size()), const_cast<char*>(bytes.data())};
  DWORD_PTR answer = 0;
  const LRESULT answered =
      ::SendMessageTimeoutA(panel, WM_COPYDATA, reinterpret_cast<WPARAM>(sender),
                            reinterpret_cast<LPARAM>(&data), SMTO_NORMAL, kAnswerPatienceMs, &answer);
  return answered != 0 ? std::optional(static_cast<RemoteAnswer>(answer)) : std::nullopt;
}

const std::string& StateTold() { return stateText; }

std::optional<RemoteAnswer> PressKey(HWND panel, int command) {
  return Ask(panel, kRemotePressKey, {reinterpret_cast<const char*>(&command), sizeof command});
}

void AwaitAction(HWND panel) {
  const ULONGLONG end = ::GetTickCount64() + kAnswerPatienceMs;
  while (::GetTickCount64() < end && Ask(panel, kRemoteAskReady, {}) == RemoteAnswer::kBusy) ::Sleep(kPollMs);
}

}  // namespace quorvex
