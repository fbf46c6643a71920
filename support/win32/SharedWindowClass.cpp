#include "support/win32/SharedWindowClass.h"

#include "support/win32/WideText.h"

namespace kavrelon {
namespace {

/// Hosts may use the library from several threads, each with its own objects.
SRWLOCK lock = SRWLOCK_INIT;

}  // namespace

SharedWindowClass::SharedWindowClass(const WindowClassDescription& description, int& holders)
    : name_(description.name),
      wideName_(toWide(name_)),
      module_(description.platform.hInstance),
      holders_(holders) {
    WNDCLASSEXW platform = description.platform;
    platform.lpszClassName = wideName_.c_str();
    AcquireSRWLockExclusive(&lock);
    if (holders_++ == 0) RegisterClassExW(&platform);
    ReleaseSRWLockExclusive(&lock);
}

SharedWindowClass::~SharedWindowClass() {
    AcquireSRWLockExclusive(&lock);
    if (--holders_ == 0) UnregisterClassW(wideName_.c_str(), module_);
    ReleaseSRWLockExclusive(&lock);
}

}  // namespace kavrelon
