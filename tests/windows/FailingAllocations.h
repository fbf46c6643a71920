#pragma once

#include <windows.h>

#include <objbase.h>
#include <oleauto.h>

#include <cstddef>
#include <cstdlib>
#include <map>
#include <string_view>

#include "support/win32/ReplacedImports.h"

namespace kavrelon {

/// Makes one allocation of a loaded module fail, as it does when memory runs out. The module is as it was
/// built: while this lives, the functions that it imports to get memory are replaced by ones that count. Its
/// own allocations are among them, as its run-time library gets their memory from the system's. One at a
/// time.
class FailingAllocations {
  public:
    explicit FailingAllocations(HMODULE module) : replaced_(module, counting()) {}
    ~FailingAllocations() { left_ = 0; }
    FailingAllocations(const FailingAllocations&) = delete;
    FailingAllocations& operator=(const FailingAllocations&) = delete;

    /// How many functions were replaced.
    std::size_t functions() const { return replaced_.count(); }
    /// The n-th allocation from here on, counted from 1, fails; those after it do not.
    static void failNth(std::size_t n) { left_ = n; }
    /// Ends that. Whether that allocation was reached.
    static bool stop() {
        const bool failed = left_ == 0;
        left_ = 0;
        return failed;
    }

  private:
    static inline std::size_t left_ = 0;

    static bool fails() { return left_ != 0 && --left_ == 0; }

    static void* allocate(std::size_t size) { return fails() ? nullptr : std::malloc(size); }
    static void* allocateZeros(std::size_t count, std::size_t size) {
        return fails() ? nullptr : std::calloc(count, size);
    }
    static void* allocateAgain(void* memory, std::size_t size) {
        return fails() ? nullptr : std::realloc(memory, size);
    }
    static BSTR WINAPI allocateText(const OLECHAR* text, UINT length) {
        return fails() ? nullptr : SysAllocStringLen(text, length);
    }
    static void* WINAPI allocateForTask(SIZE_T size) { return fails() ? nullptr : CoTaskMemAlloc(size); }
    static HGLOBAL WINAPI allocateGlobal(UINT flags, SIZE_T size) {
        return fails() ? nullptr : GlobalAlloc(flags, size);
    }

    static const std::map<std::string_view, void*>& counting() {
        static const std::map<std::string_view, void*> functions{
            {"malloc", reinterpret_cast<void*>(&allocate)},
            {"calloc", reinterpret_cast<void*>(&allocateZeros)},
            {"realloc", reinterpret_cast<void*>(&allocateAgain)},
            {"SysAllocStringLen", reinterpret_cast<void*>(&allocateText)},
            {"CoTaskMemAlloc", reinterpret_cast<void*>(&allocateForTask)},
            {"GlobalAlloc", reinterpret_cast<void*>(&allocateGlobal)},
        };
        return functions;
    }

    ReplacedImports replaced_;
};

}  // namespace kavrelon
