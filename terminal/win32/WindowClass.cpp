#include "terminal/win32/WindowClass.h"

namespace kavrelon {
namespace {

int holders = 0;

WNDCLASSEXA description(HINSTANCE module, WNDPROC procedure) {
    WNDCLASSEXA result{};
    result.cbSize = sizeof result;
    result.style = CS_OWNDC | CS_HREDRAW | CS_VREDRAW;
    result.lpfnWndProc = procedure;
    result.hInstance = module;
    result.hIcon = LoadIconA(nullptr, MAKEINTRESOURCEA(32512));
    result.hCursor = LoadCursorA(nullptr, MAKEINTRESOURCEA(32512));
    result.hbrBackground = static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH));
    result.lpszClassName = WindowClass::kName;
    return result;
}

}  // namespace

WindowClass::WindowClass(HINSTANCE module, WNDPROC procedure)
    : registration_(description(module, procedure), holders) {}

}  // namespace kavrelon
