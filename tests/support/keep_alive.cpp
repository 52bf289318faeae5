// Keeps the Wine server's desktop process up between tests: it stays as long as a process has a top-level
// window, shown or not.
#include <windows.h>

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int) {
  if (::CreateWindowA("STATIC", "quorvex keep-alive", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, instance,
                      nullptr) == nullptr)
    return 1;
  MSG message{};
  while (::GetMessageA(&message, nullptr, 0, 0) > 0) ::DispatchMessageA(&message);
  return 0;
}
