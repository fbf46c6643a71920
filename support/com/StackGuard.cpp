// The number that stands behind every function's buffers on the stack, and what happens when one was written
// over. The run-time library's own loads the system's cryptographic provider and its three libraries for
// these four bytes, and unloads them again, in every module of a program. Link this file as an object, not
// from an archive.

#include <windows.h>

// After windows.h, which it needs.
#include <ntsecapi.h>

#include <cstdint>

extern "C" {

// The names are the compiler's.
std::uintptr_t __stack_chk_guard;  // NOLINT(bugprone-reserved-identifier)

[[noreturn]] void __stack_chk_fail();  // NOLINT(bugprone-reserved-identifier)
void __stack_chk_fail() {              // NOLINT(bugprone-reserved-identifier)
    // At once: neither handlers nor destructors may run on such a stack.
    constexpr UINT kStackWrittenOver = 2;
    asm volatile("int $0x29" : : "c"(kStackWrittenOver));
    __builtin_trap();
}

}  // extern "C"

namespace {

// Before every other constructor. This file is compiled without a guard: a guarded function in which the
// number changes would fail.
[[gnu::constructor(101)]] void chooseStackGuard() {
    if (RtlGenRandom(&__stack_chk_guard, sizeof __stack_chk_guard)) return;
    LARGE_INTEGER counter{};
    QueryPerformanceCounter(&counter);
    FILETIME time{};
    GetSystemTimeAsFileTime(&time);
    __stack_chk_guard = static_cast<std::uintptr_t>(counter.QuadPart) ^ time.dwLowDateTime ^
                        (GetCurrentProcessId() << 16) ^ reinterpret_cast<std::uintptr_t>(&counter);
}

}  // namespace
