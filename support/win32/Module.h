#pragma once

#include <windows.h>

#include <string>

namespace kavrelon {

/// The library's own module.
HINSTANCE moduleInstance() noexcept;

/// Full path of the library's file.
std::wstring modulePath();

/// Keeps the library loaded while it exists: a base of everything that the outside can hold, so that no class
/// can forget to be counted.
class ModuleLock {
  public:
    ModuleLock() noexcept { lock(); }
    ModuleLock(const ModuleLock&) noexcept { lock(); }
    ModuleLock& operator=(const ModuleLock&) noexcept { return *this; }
    ~ModuleLock() { unlock(); }

    static void lock() noexcept { InterlockedIncrement(&count_); }
    static void unlock() noexcept { InterlockedDecrement(&count_); }
    /// Whether nothing holds the library any more.
    static bool isFree() noexcept { return InterlockedCompareExchange(&count_, 0, 0) == 0; }

  private:
    static inline LONG count_ = 0;
};

}  // namespace kavrelon
