#include "terminal/win32/Win32Platform.h"

#include "terminal/win32/Win32TermWindow.h"

namespace kavrelon {
namespace {

constexpr DWORD kLongestTurnMilliseconds = 50;

}  // namespace

Win32Platform::Win32Platform(HINSTANCE module) : windowClass_(module, Win32TermWindow::procedure) {}

std::unique_ptr<TermWindow> Win32Platform::createWindow(std::weak_ptr<TermWindowEvents> events) {
    return std::make_unique<Win32TermWindow>(windowClass_, std::move(events));
}

void Win32Platform::processMessages() {
    const DWORD start = GetTickCount();
    MSG message{};
    // The wide calls: they serve single-byte windows too, and the host may have windows of the other kind.
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
