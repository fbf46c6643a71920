#include "support/win32/Messages.h"

#include <windows.h>

namespace kavrelon {
namespace {

constexpr DWORD kLongestTurnMilliseconds = 50;

}  // namespace

void letMessagesThrough() {
    const DWORD start = GetTickCount();
    MSG message{};
    // The wide calls: they serve single-byte windows too, and the host may have wide ones.
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        TranslateMessage(&message);
        DispatchMessageW(&message);
        if (GetTickCount() - start >= kLongestTurnMilliseconds) return;
    }
}

}  // namespace kavrelon
