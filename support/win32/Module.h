#pragma once

#include <windows.h>

#include <string>

namespace kavrelon {

/// The module that this code is linked into: the library, or the program.
HINSTANCE moduleInstance() noexcept;

/// Full path of that module's file.
std::wstring modulePath();

/// Keeps the library loaded while it exists. A base of every class whose objects clients can hold, so that
/// none is left out of the count.
class ModuleLock {
  public:
    ModuleLock() noexcept { lock(); }
    ModuleLock(const ModuleLock&) noexcept { lock(); }
    ModuleLock& operator=(const ModuleLock&) noexcept { return *this; }
    ~ModuleLock() { unlock(); }

    static void lock() noexcept { InterlockedIncrement(&count_); }
    static void unlock() noexcept { InterlockedDecrement(&count_); }
    /// Whether nothing keeps the library loaded.
    static bool isFree() noexcept { return InterlockedCompareExchange(&count_, 0, 0) == 0; }

  private:
    static inline LONG count_ = 0;
};

}  // namespace kavrelon
