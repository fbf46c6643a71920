#include "terminal/win32/WindowClass.h"

namespace kavrelon {
namespace {

/// Hosts may use the library from several threads, each with objects of its own.
SRWLOCK lock = SRWLOCK_INIT;
int holders = 0;

}  // namespace

WindowClass::WindowClass(HINSTANCE module, WNDPROC procedure) : module_(module) {
    WNDCLASSEXA description{};
    description.cbSize = sizeof description;
    description.style = CS_OWNDC | CS_HREDRAW | CS_VREDRAW;
    description.lpfnWndProc = procedure;
    description.hInstance = module;
    description.hIcon = LoadIconA(nullptr, MAKEINTRESOURCEA(32512));
    description.hCursor = LoadCursorA(nullptr, MAKEINTRESOURCEA(32512));
    description.hbrBackground = static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH));
    description.lpszClassName = kName;
    AcquireSRWLockExclusive(&lock);
    if (holders++ == 0) RegisterClassExA(&description);
    ReleaseSRWLockExclusive(&lock);
}

WindowClass::~WindowClass() {
    AcquireSRWLockExclusive(&lock);
    if (--holders == 0) UnregisterClassA(kName, module_);
    ReleaseSRWLockExclusive(&lock);
}

}  // namespace kavrelon
