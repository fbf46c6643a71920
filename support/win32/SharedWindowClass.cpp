#include "support/win32/SharedWindowClass.h"

namespace kavrelon {
namespace {

/// Hosts may use the library from several threads, each with its own objects.
SRWLOCK lock = SRWLOCK_INIT;

}  // namespace

SharedWindowClass::SharedWindowClass(const WNDCLASSEXA& description, int& holders)
    : name_(description.lpszClassName), module_(description.hInstance), holders_(holders) {
    AcquireSRWLockExclusive(&lock);
    if (holders_++ == 0) RegisterClassExA(&description);
    ReleaseSRWLockExclusive(&lock);
}

SharedWindowClass::~SharedWindowClass() {
    AcquireSRWLockExclusive(&lock);
    if (--holders_ == 0) UnregisterClassA(name_, module_);
    ReleaseSRWLockExclusive(&lock);
}

}  // namespace kavrelon
