#include "terminal/win32/Clipboard.h"

namespace kavrelon {
namespace {

constexpr int kAttempts = 10;
constexpr DWORD kPauseMilliseconds = 10;

}  // namespace

Clipboard::Clipboard(HWND owner) {
    for (int attempt = 0; attempt < kAttempts && !open_; ++attempt) {
        if (attempt > 0) Sleep(kPauseMilliseconds);
        open_ = OpenClipboard(owner) != FALSE;
    }
}

}  // namespace kavrelon
