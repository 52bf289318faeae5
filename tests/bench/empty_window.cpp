// The least that a program with a window can be, for comparison: a window of the panel's size and nothing in
// it.
#include <windows.h>

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int) {
  WNDCLASSA empty{};
  empty.lpfnWndProc = [](HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_DESTROY) ::PostQuitMessage(0);
    return ::DefWindowProcA(window, message, wParam, lParam);
  };
  empty.hInstance = instance;
  empty.hbrBackground = static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH));
  empty.lpszClassName = "EmptyWindow";
  if (::RegisterClassA(&empty) == 0) return 1;
  if (::CreateWindowExA(WS_EX_APPWINDOW, "EmptyWindow", "Empty", WS_POPUP | WS_VISIBLE, 100, 100, 534, 115,
                        nullptr, nullptr, instance, nullptr) == nullptr) {
    return 1;
  }
  MSG message{};
  while (::GetMessageA(&message, nullptr, 0, 0) > 0) ::DispatchMessageA(&message);
  return 0;
}
