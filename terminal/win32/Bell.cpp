#include "terminal/win32/Bell.h"

#include <windows.h>

#include <atomic>
#include <bit>
#include <cstdint>

#include "terminal/BellLimit.h"

namespace kavrelon {
namespace {

constexpr SIZE_T kStackBytes = 64 * 1024;

/// What the thread is told, in its one pointer-sized argument.
struct Tone {
    std::uint16_t frequency;
    std::uint16_t milliseconds;
};
static_assert(sizeof(Tone) == sizeof(std::uint32_t));

/// Set while a request is looked at and while the thread runs; who set it may touch what is below.
std::atomic<bool> busy{false};
BellLimit limit;

HMODULE thisModule(DWORD flags) {
    HMODULE module = nullptr;
    GetModuleHandleExA(flags | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<LPCSTR>(&busy),
                       &module);
    return module;
}

DWORD WINAPI sound(void* argument) {
    const auto tone = std::bit_cast<Tone>(static_cast<std::uint32_t>(reinterpret_cast<ULONG_PTR>(argument)));
    Beep(tone.frequency, tone.milliseconds);
    const HMODULE self = thisModule(GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT);
    busy = false;
    FreeLibraryAndExitThread(self, 0);
}

bool startThread(Tone tone) {
    // Keeps this code in memory until the thread has left it, whatever the host unloads.
    const HMODULE self = thisModule(0);
    if (self == nullptr) return false;
    void* argument = reinterpret_cast<void*>(ULONG_PTR{std::bit_cast<std::uint32_t>(tone)});
    const HANDLE thread =
        CreateThread(nullptr, kStackBytes, sound, argument, STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
    if (thread == nullptr) {
        FreeLibrary(self);
        return false;
    }
    CloseHandle(thread);
    return true;
}

}  // namespace

void soundBell(int frequencyHertz, int milliseconds) noexcept {
    if (busy.exchange(true)) return;
    const Tone tone{static_cast<std::uint16_t>(frequencyHertz), static_cast<std::uint16_t>(milliseconds)};
    if (!limit.mayRing(GetTickCount()) || !startThread(tone)) busy = false;
}

}  // namespace kavrelon
