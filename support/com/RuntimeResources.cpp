// Gives back what the compiler's run-time library takes when this library is loaded and never returns: a
// thread-local slot once an exception was thrown, the semaphores of its mutexes, and the memory that it keeps
// for exceptions when there is no other. Without this, a process that loads and unloads the library a
// thousand times has no slot left and fails.
//
// The run-time is linked in, so its calls of the system go through this image's import slots, and a slot
// defined here comes before the import library's. The file must be linked as an object, not from an archive.

#include <windows.h>

#include <array>

namespace __gnu_cxx {
void __freeres();  // frees the memory kept for exceptions
}

namespace {

constexpr LONG kCapacity = 32;

/// What was taken so far. It is filled before any constructor runs, so it has none itself.
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

/// Constructed before every other object of the library, and therefore destroyed behind all of them, when
/// nothing can throw any more.
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
