// Frees, when the library is unloaded, what the compiler's run-time library allocates and never frees: a
// thread-local slot after the first exception, the semaphores of its mutexes, and its memory reserve for
// exceptions. Without this, a process that loads and unloads the library a thousand times runs out of slots
// and fails.
//
// The run-time is linked in statically, so it calls the system through this image's import slots, and a slot
// defined here takes precedence over the import library's. Link this file as an object, not from an archive.

#include <windows.h>

#include <array>

namespace __gnu_cxx {
// Frees the memory reserve for exceptions. The name is the run-time library's.
void __freeres();  // NOLINT(bugprone-reserved-identifier)
}  // namespace __gnu_cxx

namespace {

constexpr LONG kCapacity = 32;

/// Resources allocated so far. Used before any constructor runs, so it has none itself.
template <class Resource>
struct Taken {
    std::array<Resource, kCapacity> items;
    LONG count;

    Resource add(Resource item) {
        const LONG place = InterlockedIncrement(&count) - 1;
        if (place < kCapacity) items[static_cast<std::size_t>(place)] = item;
        return item;
    }

    template <class Free>
    void giveBack(Free free) {
        for (LONG i = 0; i < count && i < kCapacity; ++i) free(items[static_cast<std::size_t>(i)]);
        count = 0;
    }
};

Taken<HANDLE> semaphores;
Taken<DWORD> threadSlots;

HANDLE WINAPI createSemaphore(SECURITY_ATTRIBUTES* security, LONG initial, LONG maximum, LPCWSTR name) {
    return semaphores.add(CreateSemaphoreExW(security, initial, maximum, name, 0, SEMAPHORE_ALL_ACCESS));
}

DWORD WINAPI allocateThreadSlot() {
    using Allocate = DWORD WINAPI();
    const FARPROC found = GetProcAddress(GetModuleHandleW(L"kernel32"), "TlsAlloc");
    return threadSlots.add(reinterpret_cast<Allocate*>(reinterpret_cast<void*>(found))());
}

/// Constructed before every other object of the library, and therefore destroyed after all of them, when
/// nothing throws any more.
struct RuntimeResources {
    ~RuntimeResources() {
        __gnu_cxx::__freeres();
        semaphores.giveBack(&CloseHandle);
        threadSlots.giveBack(&TlsFree);
    }
};

[[gnu::init_priority(101)]] RuntimeResources runtimeResources;

}  // namespace

extern "C" {
extern decltype(&createSemaphore) createSemaphoreSlot asm("__imp__CreateSemaphoreW@16");
decltype(&createSemaphore) createSemaphoreSlot = &createSemaphore;

extern decltype(&allocateThreadSlot) allocateThreadSlotSlot asm("__imp__TlsAlloc@0");
decltype(&allocateThreadSlot) allocateThreadSlotSlot = &allocateThreadSlot;
}
