#include "platform/win32/com/MessagePump.h"

#include <windows.h>

namespace nv::com {

int PumpWaitingMessages() {
  int dispatched = 0;
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) {
      PostQuitMessage(static_cast<int>(message.wParam));
      break;
    }
    TranslateMessage(&message);
    DispatchMessageW(&message);
    ++dispatched;
  }
  return dispatched;
}

}  // namespace nv::com
